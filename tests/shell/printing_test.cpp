// Printing of reports and input, to printers and PDF files.
#include "person.h"

#include "runtime/file_text.h"
#include "support/faulty_machine.h"

#include <QLineEdit>
#include <QPrinter>
#include <QProcess>

#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <sstream>

namespace korvane::test {
namespace {

std::string textOfPdf(const std::string& path) {
    QProcess reader;
    reader.start("pdftotext", {"-layout", QString::fromStdString(path), "-"});
    EXPECT_TRUE(reader.waitForFinished()) << "pdftotext";
    return reader.readAllStandardOutput().toStdString();
}

/// What pdfinfo tells under a name.
std::string pdfInfo(const std::string& path, const std::string& name) {
    QProcess reader;
    reader.start("pdfinfo", {QString::fromStdString(path)});
    EXPECT_TRUE(reader.waitForFinished()) << "pdfinfo";
    for (const QByteArray& line : reader.readAllStandardOutput().split('\n')) {
        if (line.startsWith(QByteArray::fromStdString(name + ":"))) {
            return line.mid(static_cast<qsizetype>(name.size()) + 1).trimmed().toStdString();
        }
    }
    return {};
}

/// The words of all lines in their order, without blanks and page breaks.
std::string words(const std::string& text) {
    std::string result;
    for (const char c : text) {
        if (c != ' ' && c != '\n' && c != '\f' && c != '\r') {
            result += c;
        }
    }
    return result;
}

/// A print's text without the page numbers, which stand in a line of their own.
std::string withoutPageNumbers(const std::string& text) {
    std::string rest;
    std::istringstream lines(text);
    static const std::regex number("\\f?\\s*Page \\d+ of \\d+\\s*");
    for (std::string line; std::getline(lines, line);) {
        if (!std::regex_match(line, number)) {
            rest += line + "\n";
        }
    }
    return rest;
}

TEST(Printing, WithoutAPrinterTheReportGoesToAPdfFileLineByLine) {
    Person person;
    person.open(examplePath("cantilever-dry-sand"));
    person.choose("mnuSolveItem_0");
    person.push("cmdContinue");
    person.push("cmdOK");
    const std::string pdf = person.userFile("report.pdf");
    person.expectFile(person.userFile("report")); // the extension is the dialog's
    person.choose("mnuPrintItem_1");
    person.expectNothingLeft();
    const std::string report = readFile(person.session().report.CurrentOutputName);
    EXPECT_EQ(words(withoutPageNumbers(textOfPdf(pdf))), words(report));
}

TEST(Printing, ThePdfDialogSuggestsANameMadeOfTheProblems) {
    Person person;
    person.open(examplePath("cantilever-dry-sand"));
    const auto suggests = [](const char* name) {
        return [name](QFileDialog& dialog) {
            EXPECT_EQ(dialog.findChild<QLineEdit*>("fileNameEdit")->text(), name);
        };
    };
    person.expectFile("", suggests("cantilever-dry-sand.pdf"));
    person.choose("mnuPrintItem_1");
    person.expectFile("", suggests("cantilever-dry-sand-input.pdf"));
    person.choose("mnuPrintItem_0");
    // Open and Save keep their cleared name.
    person.expectFile("", suggests(""));
    person.choose("mnuSaveItem_1");
    person.expectNothingLeft();
}

TEST(Printing, PrintingTheInputResetsTheLineCount) {
    Person person;
    person.open(examplePath("cantilever-dry-sand"));
    person.expectFile(person.userFile("input.pdf"));
    person.choose("mnuPrintItem_0");
    EXPECT_EQ(person.session().FileLineCount, 1 + 2); // one heading line, control and wall
    const std::string text = textOfPdf(person.userFile("input.pdf"));
    EXPECT_NE(text.find("'CANTILEVER WALL IN DRY SAND"), std::string::npos);
    EXPECT_NE(text.find("FINISHED"), std::string::npos);
}

TEST(Printing, CancelPrintsNothingAndChangesNothing) {
    Person person;
    person.open(examplePath("cantilever-dry-sand"));
    person.expectFile("");
    person.choose("mnuPrintItem_0");
    EXPECT_EQ(person.session().FileLineCount, 0);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST(Printing, AFailedWriteTellsAndLeavesTheOldFileWhole) {
    constexpr rlim_t lessThanAPage = 1000; // bytes
    Person person;
    person.open(examplePath("cantilever-dry-sand"));
    const std::string old = person.userFile("old.pdf");
    writeFile(old, "the old print");
    for (const char* item : {"mnuPrintItem_0", "mnuPrintItem_1"}) {
        person.expectFile(old);
        person.expectBox("Yes"); // it exists
        person.expectBox("OK");
        {
            const SmallDisk full(lessThanAPage);
            person.choose(item);
        }
        person.expectNothingLeft();
        EXPECT_EQ(person.boxes.back().title, "FILE ERROR");
        EXPECT_EQ(person.boxes.back().text, "File: " + old + "\nDisk full\n\nYour data are kept.");
        EXPECT_EQ(readFile(old), "the old print");
    }
    EXPECT_EQ(person.session().FileLineCount, 0); // nothing was printed
}

/// A machine with a printer, and what its setup dialog leaves.
void givePrinter(Person& person, const std::function<bool(QPrinter&)>& setUp) {
    PrintServices& services = person.program->desktop.printServices;
    services.hasPrinter = [] { return true; };
    services.chooseSetup = [setUp](QPrinter& printer, QWidget*) {
        EXPECT_EQ(QApplication::overrideCursor(), nullptr);
        return setUp(printer);
    };
}

TEST(Printing, CancelAtThePrintersSetupPrintsNothingAndChangesNothing) {
    Person person;
    person.open(examplePath("cantilever-dry-sand"));
    int asked = 0;
    givePrinter(person, [&](const QPrinter& printer) {
        ++asked;
        EXPECT_EQ(printer.docName().toStdString(),
                  "cantilever-dry-sand.dat: CANTILEVER WALL IN DRY SAND");
        return false;
    });
    person.choose("mnuPrintItem_0");
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(person.session().FileLineCount, 0);
    EXPECT_EQ(person.boxes.size(), 1U); // that the input is complete
}

TEST(Printing, TheSetupsOwnPdfFileTakesTheWholeReport) {
    Person person;
    person.open(examplePath("cantilever-dry-sand"));
    const std::string pdf = person.userFile("by-setup.pdf");
    givePrinter(person, [&](QPrinter& printer) {
        printer.setOutputFileName(QString::fromStdString(pdf));
        return true;
    });
    person.choose("mnuPrintItem_1");
    EXPECT_EQ(words(withoutPageNumbers(textOfPdf(pdf))),
              words(readFile(person.session().report.CurrentOutputName)));
}

TEST(Printing, APrinterThatIsGoneAfterTheSetupIsTold) {
    Person person;
    person.open(examplePath("cantilever-dry-sand"));
    givePrinter(person, [](QPrinter& printer) {
        printer.setOutputFileName({});
        printer.setOutputFormat(QPrinter::PdfFormat); // what the toolkit falls back to
        return true;
    });
    person.expectBox("OK");
    person.choose("mnuPrintItem_0");
    person.expectNothingLeft();
    EXPECT_EQ(person.boxes.back().title, "FILE ERROR");
    EXPECT_NE(person.boxes.back().text.find("Device I/O error"), std::string::npos);
    EXPECT_EQ(person.session().FileLineCount, 0);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST(Printing, ALineWiderThanThePageWrapsAndLongTextsTakeMorePages) {
    std::vector<std::string> lines(200, "line");
    lines[0] = std::string(300, 'w');
    PrintServices services;
    const TemporaryFolder folder;
    const std::string pdf = (folder.path() / "wide.pdf").string();
    services.hasPrinter = [] { return false; };
    services.choosePdf = [&](QWidget*, const QString&) { return QString::fromStdString(pdf); };
    EXPECT_TRUE(printPages(nullptr, services, {"A wide text", "wide"}, textPages(lines)));
    const std::string text = textOfPdf(pdf);
    EXPECT_EQ(std::count(text.begin(), text.end(), 'w'), 300);
    const auto pages = std::count(text.begin(), text.end(), '\f'); // of about 60 lines
    EXPECT_GE(pages, 3);
    for (int page = 1; page <= pages; ++page) {
        const std::string number = "Page " + std::to_string(page) + " of " + std::to_string(pages);
        EXPECT_NE(text.find(number), std::string::npos) << number;
    }
    EXPECT_EQ(pdfInfo(pdf, "Title"), "A wide text");
}

} // namespace
} // namespace korvane::test
