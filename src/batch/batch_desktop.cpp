#include "batch/batch_desktop.h"

#include "commands/commands.h"
#include "runtime/number_text.h"

#include <string_view>

namespace korvane::batch {

Answer BatchDesktop::Ask(const MessageBox& box) {
    const Answer answer = answerTo(box);
    messages_.push_back({box, answer});
    return answer;
}

Answer BatchDesktop::answerTo(const MessageBox& box) const {
    if (box.buttons != Buttons::YesNo) {
        return Answer::Ok;
    }
    if (box.title == "LARGE FACTOR OF SAFETY") {
        constexpr std::string_view words = "greater than ";
        const std::string limit = box.text.substr(box.text.find(words) + words.size());
        return valueAtHead(limit) <= options_.maxFs ? Answer::Yes : Answer::No;
    }
    return Answer::Yes; // a short file may be complete all the same
}

std::string BatchDesktop::ChooseFile(const FileDialog&) {
    return job_.inputPath.string();
}

void BatchDesktop::ShowScreen(Screen screen, Session& session) {
    if (screen == Screen::WEDGMETH) {
        options_.fixedSurface ? cmdFixed_Click(session) : cmdSweep_Click(session);
    } else if (screen == Screen::ROWEPILE) {
        acceptDefaultSections(session);
    }
}

} // namespace korvane::batch
