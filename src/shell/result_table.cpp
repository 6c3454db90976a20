#include "shell/result_table.h"

#include "widgets/geometry.h"

#include <QHeaderView>

namespace korvane {

QTableWidget* createResultTable(const char* name, const QString& described) {
    auto* table = new QTableWidget;
    table->setObjectName(name);
    table->setAccessibleName(described);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setTabKeyNavigation(false);
    table->setAlternatingRowColors(true);
    table->setWordWrap(false);
    table->verticalHeader()->hide();
    table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() + pixels(120));
    return table;
}

} // namespace korvane
