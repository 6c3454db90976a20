#include "sheet/labels.h"

#include <algorithm>
#include <cstddef>

namespace korvane::sheet {

namespace {

constexpr double TouchingEdges = 1e-6;

/// Widths of letters in parts of the type size: those of wide plain fonts.
double letterWidth(unsigned char letter) {
    constexpr std::string_view narrow = " .,:;'|!ijl()";
    constexpr std::string_view wide = "mwMW%@";
    if (narrow.find(static_cast<char>(letter)) != std::string_view::npos) {
        return 0.4;
    }
    if (wide.find(static_cast<char>(letter)) != std::string_view::npos) {
        return 0.98;
    }
    return letter >= 'A' && letter <= 'Z' ? 0.73 : 0.64;
}

/// Slots that stand edge to edge.
struct Cluster {
    double sum = 0; ///< of the places that the members want the first edge at
    double size = 0;
    int members = 0;

    double start(double low, double high) const {
        const double wanted = sum / members;
        return std::max(low, std::min(wanted, high - size));
    }
};

} // namespace

bool overlap(const LabelBox& a, const LabelBox& b) {
    return a.left < b.right() - TouchingEdges && b.left < a.right() - TouchingEdges &&
           a.top < b.bottom() - TouchingEdges && b.top < a.bottom() - TouchingEdges;
}

double textWidth(std::string_view text, double size) {
    double width = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        const bool continues = (byte & 0xC0U) == 0x80;
        width += continues ? 0 : letterWidth(byte);
    }
    return width * size;
}

std::vector<double> spreadSlots(const std::vector<LabelSlot>& slots, double low, double high) {
    std::vector<Cluster> clusters;
    for (const LabelSlot& slot : slots) {
        clusters.push_back({slot.wanted - slot.size / 2, slot.size, 1});
        // A cluster that reaches into the one before joins it.
        while (clusters.size() > 1) {
            Cluster& last = clusters.back();
            Cluster& before = clusters[clusters.size() - 2];
            if (before.start(low, high) + before.size <= last.start(low, high)) {
                break;
            }
            before.sum += last.sum - last.members * before.size;
            before.size += last.size;
            before.members += last.members;
            clusters.pop_back();
        }
    }
    std::vector<double> middles;
    std::size_t next = 0;
    for (const Cluster& cluster : clusters) {
        double edge = cluster.start(low, high);
        for (int member = 0; member < cluster.members; ++member) {
            const double size = slots[next++].size;
            middles.push_back(edge + size / 2);
            edge += size;
        }
    }
    return middles;
}

} // namespace korvane::sheet
