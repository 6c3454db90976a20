#include "widgets/help_sections.h"

#include "plots/plot_screen.h"

namespace korvane {

namespace {

struct WindowSection {
    const char* window;
    const char* section;
};

constexpr WindowSection sections[] = {
    {"CKORVANE", "The menus"},
    {"KEYIN", "Data entry"},
    {"HEADCONT", "Heading, Wall and Control Data"},
    {"SURFACE", "Soil Surface Data"},
    {"LAYRDATA", "Soil Layer Data"},
    {"WATER", "Water Data"},
    {"SURCHCON", "Surface Surcharge Data"},
    {"SURCHARG", "Surface Surcharge Data"},
    {"HORCON", "Applied Horizontal Loads"},
    {"HORLOAD", "Applied Horizontal Loads"},
    {"ROWEPILE", "Sheet pile data"},
    {"WEDGMETH", "Wedge methods"},
    {"VUINPTFL", "The input file"},
    {"VUINECHO", "The output report"},
    {"NOTES", "Notes"},
    {"VERIFY", "Verification"},
    {"COMPARE", "Comparisons"},
    {"STUDY", "The study window"},
    {"messageBox", "Messages and what to do"},
    {"CMDialog1", "File"},
    {"printDialog", "File"},
    {"splash_form", "Help"},
};

} // namespace

QString helpSection(const QString& window) {
    for (const WindowSection& entry : sections) {
        if (window == entry.window) {
            return entry.section;
        }
    }
    for (const PlotScreen& screen : plotScreens()) {
        if (window == screen.objectName) {
            return "Plots";
        }
    }
    return "Getting started";
}

} // namespace korvane
