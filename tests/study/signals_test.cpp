// Signals in each step of korvane-study: it ends by them, loses nothing, and the same command goes
// on.
#include "study_desk.h"
#include "study_process.h"

#include "study/command_line.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <functional>
#include <memory>

#include <sys/wait.h>

namespace korvane::study::test {

namespace {

namespace fs = std::filesystem;

using Words = std::vector<std::string>;

/// All that a study has come to.
struct Result {
    std::vector<TextRow> variants;
    std::vector<TextRow> statistics;
    std::vector<TextRow> variables;

    explicit Result(const StudyDesk& desk)
        : variants(desk.variants("o")),
          statistics(desk.rows("o", "SELECT * FROM statistics ORDER BY rowid")),
          variables(desk.rows("o", "SELECT * FROM variables ORDER BY rowid")) {}
    bool operator==(const Result&) const = default;
};

/// A command in a folder that is made ready for it.
struct Step {
    std::shared_ptr<StudyDesk> made;
    Words words; ///< with %, where the folder stands

    void prepare(const StudyDesk& desk) const {
        fs::copy(made->file(""), desk.file(""),
                 fs::copy_options::recursive | fs::copy_options::overwrite_existing);
    }
    Words wordsIn(const StudyDesk& desk) const {
        Words all = words;
        for (std::string& word : all) {
            if (word[0] == '%') {
                word = desk.file(word.substr(1));
            }
        }
        return all;
    }
};

Step runOf(const std::string& text) {
    Step step{.made = std::make_shared<StudyDesk>(),
              .words = {"run", "%s.toml", "--output", "%o", "--progress", "1000000"}};
    step.made->write("s.toml", text);
    return step;
}

/// The same where all rows are there and no statistics.
Step statisticsOf(const std::string& text) {
    Step step = runOf(text);
    step.made->runStudy(text, "o");
    step.made->rows("o", "DELETE FROM statistics");
    step.made->rows("o", "DELETE FROM variables");
    step.made->rows("o", "UPDATE provenance SET value = 'no' WHERE key = 'complete'");
    return step;
}

Step collectOf(const std::string& text) {
    Step step{.made = std::make_shared<StudyDesk>(), .words = {"collect", "%o"}};
    step.made->runStudy(text, "o", {"--part", "1/2"});
    step.made->runStudy(text, "o", {"--part", "2/2"});
    return step;
}

int messagesOf(const Step& step) {
    const StudyDesk desk;
    step.prepare(desk);
    NarrowPipe pipe;
    const pid_t child = pipe.start(step.wordsIn(desk));
    int count = 0;
    for (std::string message; pipe.take(message);) {
        ++count;
    }
    EXPECT_EQ(waitFor(child), 0);
    return count;
}

/// No transaction is left open, and nobody is kept out.
void expectSoundFolder(const StudyDesk& desk) {
    for (const char* left :
         {"results.sqlite-journal", "collecting.sqlite-journal", "collect.lock"}) {
        EXPECT_FALSE(fs::exists(fs::path(desk.file("o")) / left)) << left;
    }
}

/// Ends the command by a signal behind each of its messages; `held` looks at the folder where the
/// program cannot have gone further than to the message behind the next.
void endAtEachMessage(const Step& step,
                      const std::function<void(const StudyDesk&, const std::string&)>& held = {}) {
    const StudyDesk whole;
    step.prepare(whole);
    ASSERT_EQ(StudyDesk::run(step.wordsIn(whole)).status, StatusDone);
    const Result expected(whole);
    const int count = messagesOf(step);
    ASSERT_GT(count, 0);
    for (int n = 0; n < count; ++n) {
        SCOPED_TRACE(n);
        const StudyDesk desk;
        step.prepare(desk);
        NarrowPipe pipe;
        const pid_t child = pipe.start(step.wordsIn(desk));
        std::string message;
        for (int taken = 0; taken < n; ++taken) {
            ASSERT_TRUE(pipe.take(message));
        }
        pipe.awaitOne();
        const int signal = n % 2 == 0 ? SIGTERM : SIGINT;
        kill(child, signal);
        std::string last;
        while (pipe.take(message)) {
            last = last.empty() ? message : last;
        }
        const int end = waitFor(child);
        const bool isLast = n == count - 1; // nothing holds it any more: it may have ended before
        EXPECT_TRUE((WIFSIGNALED(end) && WTERMSIG(end) == signal) || (isLast && end == 0)) << end;
        expectSoundFolder(desk);
        if (held && !isLast) {
            held(desk, last);
        }
        const CommandRun again = StudyDesk::run(step.wordsIn(desk));
        EXPECT_EQ(again.status, StatusDone) << again.err;
        EXPECT_TRUE(Result(desk) == expected);
    }
}

std::string wall(const std::string& method, const std::string& more) {
    return head(method, more) + friction("distribution = \"Normal(32, 2)\"") +
           limit("deep", "penetration > 18") + limit("deeper", "penetration > 20");
}

} // namespace

TEST(Signals, EndASearchForDesignPoints) {
    endAtEachMessage(runOf(wall("reliability", "")));
    endAtEachMessage(runOf(wall("reliability", "algorithm = \"importance\"\nsize = 300")));
}

TEST(Signals, EndASearchForATarget) {
    endAtEachMessage(runOf(head("target") + friction("low = 24\nhigh = 40") +
                           "[target]\noutput = \"penetration\"\nvalue = 14\n"));
}

TEST(Signals, EndTheStatisticsAndAllRowsStay) {
    int seen = 0;
    static constexpr int Size = 12000; // SQLite looks for signals every 20,000 steps of its machine
    endAtEachMessage(statisticsOf(wall("sample", "size = " + std::to_string(Size))),
                     [&seen](const StudyDesk& desk, const std::string& message) {
                         ASSERT_EQ(message, "statistics");
                         ++seen;
                         EXPECT_EQ(desk.number("o", "SELECT count(*) FROM variants"), Size);
                         EXPECT_EQ(desk.number("o", "SELECT count(*) FROM statistics"), 0);
                         EXPECT_EQ(desk.rows("o", "SELECT value FROM provenance WHERE key = "
                                                  "'complete'"),
                                   (std::vector<TextRow>{{"no"}}));
                     });
    EXPECT_EQ(seen, 1);
}

TEST(Signals, EndACollection) {
    endAtEachMessage(collectOf(wall("reliability", "algorithm = \"importance\"\nsize = 300")));
}

} // namespace korvane::study::test
