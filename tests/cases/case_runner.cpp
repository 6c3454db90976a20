// Runs case files (see cases/README.md): tells every check of one, or writes the page of all.
#include "verification/verification.h"
#include "verification_page.h"

#include <cstdio>
#include <cstring>

int main(int argc, char** argv) {
    const bool page = argc >= 2 && std::strcmp(argv[1], "--page") == 0;
    if (argc != 2) {
        std::fputs("usage: case_runner FILE.case|--page\n", stderr);
        return 2;
    }
    using namespace korvane;
    const Verification verification =
        verifyCases(page ? shippedCases() : std::vector<std::filesystem::path>{argv[1]});
    const std::string text =
        page ? test::verificationPage(verification) : verificationTable(verification);
    std::fputs(text.c_str(), stdout);
    std::fputs(verificationMessages(verification).c_str(), stderr);
    return verification.holds() ? 0 : 1;
}
