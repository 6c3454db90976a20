// docs/verification.md: every case with its figures and reasons.
#pragma once

#include "verification/verification.h"

#include <string>

namespace korvane::test {

std::string verificationPage(const Verification& verification);

} // namespace korvane::test
