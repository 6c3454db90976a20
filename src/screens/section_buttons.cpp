#include "screens/section_buttons.h"

#include <QFrame>
#include <QPushButton>

namespace korvane {

SectionControl makeSectionControl(QWidget* parent, const SectionButton& section,
                                  const Place& where) {
    constexpr double edge = 90; // twips of the panel around its button
    constexpr QColor buttonColour(225, 225, 225);
    QFrame* panel = makePanel(parent, section.panel, where);
    QPushButton* button = makeButton(panel, section.name, section.caption,
                                     {edge, edge, where.width - 2 * edge, where.height - 2 * edge});
    paintGround(button, buttonColour, section.required ? RequiredColour : PlainColour);
    return {panel, button};
}

} // namespace korvane
