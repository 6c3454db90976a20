// A desktop without windows that answers by the options of the command line.
#pragma once

#include "batch/solve_input.h"
#include "commands/desktop.h"

namespace korvane::batch {

class BatchDesktop : public Desktop {
  public:
    BatchDesktop(const Job& job, const Options& options) : job_(job), options_(options) {}

    Answer Ask(const MessageBox& box) override;
    std::string ChooseFile(const FileDialog& dialog) override;
    void ShowScreen(Screen screen, Session& session) override;
    void SetBusy(bool) override {}
    bool PrintDocument(const std::string&, const std::vector<std::string>&) override {
        return false;
    }
    void QuitHelp() override {}
    void EndProgram() override {}
    void Mirror(const Session&) override {}

    const std::vector<Message>& messages() const { return messages_; }

  private:
    Answer answerTo(const MessageBox& box) const;

    const Job& job_;
    const Options& options_;
    std::vector<Message> messages_;
};

} // namespace korvane::batch
