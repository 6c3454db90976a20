// A reference to a callable, for a procedure that calls it before it returns.
#pragma once

#include <type_traits>
#include <utility>

namespace korvane {

template <class Signature>
class FunctionRef;

/// Takes any callable of its signature without memory of its own; the callable must outlive it.
template <class Result, class... Arguments>
class FunctionRef<Result(Arguments...)> {
  public:
    template <class Callable>
    requires(!std::is_same_v<std::remove_cvref_t<Callable>, FunctionRef>)
        FunctionRef(Callable&& callable) // NOLINT(bugprone-forwarding-reference-overload)
        : context_(const_cast<void*>(static_cast<const void*>(&callable))),
          call_([](void* context, Arguments... arguments) -> Result {
              return (*static_cast<std::remove_reference_t<Callable>*>(context))(
                  std::forward<Arguments>(arguments)...);
          }) {}

    Result operator()(Arguments... arguments) const {
        return call_(context_, std::forward<Arguments>(arguments)...);
    }

  private:
    void* context_;
    Result (*call_)(void*, Arguments...);
};

} // namespace korvane
