// The answer page of the study window: which output and which cut, the figure and its numbers.
#pragma once

#include "survey/answer.h"

#include <QWidget>

#include <vector>

class QComboBox;
class QHBoxLayout;
class QLabel;
class QSplitter;
class QTableWidget;

namespace korvane {

class StudyPicture;

class StudyAnswer : public QWidget {
    Q_OBJECT

  public:
    explicit StudyAnswer(QWidget* parent = nullptr);

    void showAnswer(const study::Question& question, study::StudyRows rows);
    /// What is on show.
    study::SizedFigure figure() const;
    std::string tableText() const { return tabbedText(cells_); }

  private:
    QComboBox* addChoice(QHBoxLayout* row, const char* name, const QString& caption);
    /// The choices that the question offers.
    void offer();
    void offerPlaces();
    /// The figure and the numbers of the choices.
    void choose();
    study::GridCut cut() const;
    void fillTable();
    /// The table has the height that it needs, up to a limit; the figure the rest.
    void shareRoom();

    study::Question question_;
    study::StudyRows rows_;
    study::TextTable cells_;
    bool offering_ = false;
    QLabel* outcome_ = nullptr;
    QComboBox* output_ = nullptr;
    QComboBox* along_ = nullptr;
    QComboBox* by_ = nullptr;
    QWidget* cutRow_ = nullptr;
    QLabel* where_ = nullptr;
    QHBoxLayout* placeRow_ = nullptr;
    std::vector<QComboBox*> places_; ///< of each variable, its value
    QSplitter* splitter_ = nullptr;
    StudyPicture* picture_ = nullptr;
    QTableWidget* table_ = nullptr;
};

} // namespace korvane
