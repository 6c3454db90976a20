#include "pixels.h"

#include "shell/plot_picture.h"

#include <QPixmap>
#include <QProcess>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>

namespace korvane::test {

namespace {

bool isNearly(QRgb a, QRgb b) {
    constexpr int Steps = 3;
    return std::abs(qRed(a) - qRed(b)) <= Steps && std::abs(qGreen(a) - qGreen(b)) <= Steps &&
           std::abs(qBlue(a) - qBlue(b)) <= Steps;
}

/// True where the pixel of a place or a neighbour is not the ground; so is what was clipped.
bool isInked(const Pixels& pixels, Point at) {
    const QImage& image = pixels.image;
    const int column = static_cast<int>(std::floor(at.x * pixels.perTwip + pixels.origin.x));
    const int row = static_cast<int>(std::floor(at.y * pixels.perTwip + pixels.origin.y));
    if (!image.valid(column, row)) {
        return true;
    }
    const QRgb ground = image.pixel(0, image.height() - 1);
    for (int y = std::max(row - 1, 0); y <= std::min(row + 1, image.height() - 1); ++y) {
        for (int x = std::max(column - 1, 0); x <= std::min(column + 1, image.width() - 1); ++x) {
            if (!isNearly(image.pixel(x, y), ground)) {
                return true;
            }
        }
    }
    return false;
}

std::vector<Point> marksOf(const Primitive& part) {
    const Point middle{(part.a.x + part.b.x) / 2, (part.a.y + part.b.y) / 2};
    switch (part.kind) {
    case Primitive::Kind::Line:
    case Primitive::Kind::FilledRectangle:
        return {part.a, middle, part.b};
    case Primitive::Kind::Rectangle:
        return {
            {part.a.x, middle.y}, {part.b.x, middle.y}, {middle.x, part.a.y}, {middle.x, part.b.y}};
    case Primitive::Kind::Circle:
        return {{part.a.x - part.radius, part.a.y}, {part.a.x, part.a.y + part.radius}};
    default:
        return {};
    }
}

bool holds(const QImage& image, Colour colour) {
    const QRgb wanted = qRgb(colour.red, colour.green, colour.blue);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (isNearly(image.pixel(x, y), wanted)) {
                return true;
            }
        }
    }
    return false;
}

} // namespace

Pixels pixelsOf(QWidget& picture) {
    const QTransform mapping = dynamic_cast<PlotPicture&>(picture).mapping();
    const QPixmap painted = picture.grab();
    const double scale = painted.devicePixelRatio();
    return {painted.toImage(), mapping.m11() * scale, {mapping.dx() * scale, mapping.dy() * scale}};
}

Pixels pageOf(const std::string& pdf) {
    constexpr int PixelsPerInch = 100;
    const std::string stem = pdf + "-page";
    QProcess reader;
    reader.start("pdftoppm", {"-r", QString::number(PixelsPerInch), "-png",
                              QString::fromStdString(pdf), QString::fromStdString(stem)});
    EXPECT_TRUE(reader.waitForFinished());
    EXPECT_FALSE(std::filesystem::exists(stem + "-2.png"));
    return {QImage(QString::fromStdString(stem + "-1.png")), PixelsPerInch / TwipsPerInch, {}};
}

void expectPainted(const Pixels& pixels, const std::vector<Primitive>& recipe) {
    ASSERT_FALSE(recipe.empty());
    std::vector<Colour> colours;
    for (const Primitive& part : recipe) {
        for (const Point& mark : marksOf(part)) {
            EXPECT_TRUE(isInked(pixels, mark)) << "at " << mark.x << ", " << mark.y;
        }
        // The grey and green points at a curve's start lie under the curve.
        const bool visible = part.kind != Primitive::Kind::Point && !(part.a == part.b);
        if (visible && std::find(colours.begin(), colours.end(), part.colour) == colours.end()) {
            colours.push_back(part.colour);
        }
    }
    for (const Colour& colour : colours) {
        EXPECT_TRUE(holds(pixels.image, colour))
            << colour.red << ", " << colour.green << ", " << colour.blue;
    }
}

} // namespace korvane::test
