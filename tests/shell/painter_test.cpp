// The surface of pictures with pixels: sharp edges, and strips without uneven gaps.
#include "shell/painter_surface.h"

#include <QImage>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

namespace korvane::test {
namespace {

constexpr double TwipsPerPixel = 15; // a line of one unit is a pixel wide

QImage drawn(const std::function<void(Surface&)>& recipe) {
    QImage image(200, 100, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.scale(1 / TwipsPerPixel, 1 / TwipsPerPixel);
    PainterSurface surface(painter);
    recipe(surface);
    return image;
}

/// Pixels in the middle column that are neither white nor wholly of the colour.
int mixedPixels(const QImage& image, QRgb colour) {
    int mixed = 0;
    for (int y = 0; y < image.height(); ++y) {
        const QRgb pixel = image.pixel(image.width() / 2, y);
        mixed += pixel != colour && pixel != qRgb(255, 255, 255) ? 1 : 0;
    }
    return mixed;
}

TEST(PainterSurface, LinesLevelWithinHalfAPixelLieOnWholePixels) {
    for (const double slope : {0.0, 0.2, 0.45}) { // pixels over the line's length
        const QImage image = drawn([&](Surface& surface) {
            surface.setLineWidth(2);
            surface.line({150, 307}, {2850, 307 + slope * TwipsPerPixel}, Red);
        });
        EXPECT_EQ(mixedPixels(image, qRgb(255, 0, 0)), 0) << slope;
        int rows = 0;
        for (int y = 0; y < image.height(); ++y) {
            EXPECT_EQ(image.pixel(20, y), image.pixel(180, y)) << "the same pixels all along";
            rows += image.pixel(100, y) == qRgb(255, 0, 0) ? 1 : 0;
        }
        EXPECT_EQ(rows, 2);
    }
}

TEST(PainterSurface, UprightLinesLikewise) {
    const QImage image = drawn([](Surface& surface) {
        surface.setLineWidth(3);
        surface.line({1000, 150}, {1006, 1350}, Blue);
    });
    int columns = 0;
    for (int x = 0; x < image.width(); ++x) {
        EXPECT_EQ(image.pixel(x, 20), image.pixel(x, 80));
        columns += image.pixel(x, 50) == qRgb(0, 0, 255) ? 1 : 0;
    }
    EXPECT_EQ(columns, 3);
}

TEST(PainterSurface, ASlantedLineIsAntialiased) {
    const QImage image = drawn([](Surface& surface) {
        surface.setLineWidth(1);
        surface.line({150, 300}, {2850, 450}, Red);
    });
    EXPECT_GT(mixedPixels(image, qRgb(255, 0, 0)), 0);
}

TEST(PainterSurface, NarrowStripsHaveEvenGaps) {
    // Two pixels of ink every 3.3: on whole pixels the gaps would be one and two pixels in turn.
    constexpr double Step = 3.3;
    const QImage image = drawn([](Surface& surface) {
        surface.setLineWidth(2);
        for (int strip = 0; strip < 20; ++strip) {
            const double y = (10 + Step * strip) * TwipsPerPixel;
            surface.line({150, y}, {2850, y}, Red);
            surface.line({2850, y}, {150, y}, Red); // the next strip's upper edge
        }
    });
    // No gap is wholly white over more than one pixel, so that none looks twice as wide.
    int white = 0;
    int widest = 0;
    for (int y = 15; y < 70; ++y) {
        white = image.pixel(100, y) == qRgb(255, 255, 255) ? white + 1 : 0;
        widest = std::max(widest, white);
    }
    EXPECT_LE(widest, 1);
    EXPECT_GT(mixedPixels(image, qRgb(255, 0, 0)), 20);
}

TEST(PainterSurface, ARectangleThinnerThanAPixelIsSeen) {
    const QImage image = drawn([](Surface& surface) {
        surface.filledRectangle({{1501, 150}, {1505, 1350}}, Black);
    });
    EXPECT_LT(qRed(image.pixel(100, 50)), 255);
}

} // namespace
} // namespace korvane::test
