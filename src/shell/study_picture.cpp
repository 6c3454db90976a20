#include "shell/study_picture.h"

#include "shell/painter_surface.h"
#include "widgets/gate.h"
#include "widgets/geometry.h"
#include "widgets/shown_text.h"

#include <QEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace korvane {

namespace {

constexpr double LeastWidth = 7200;  // twips
constexpr double LeastHeight = 3000; // twips
constexpr double FileWidth = 10800;
constexpr double FileHeight = 6480;

double pixelsPerTwip() {
    return pixels(TwipsPerInch) / TwipsPerInch;
}

} // namespace

StudyPicture::StudyPicture(QWidget* parent) : QScrollArea(parent), ground_(new QWidget) {
    setObjectName("picAnswer");
    setWidgetResizable(true);
    ground_->setObjectName("picGround");
    ground_->installEventFilter(this);
    setWidget(ground_);
    setMinimumHeight(pixels(1800));
}

void StudyPicture::showFigure(Recipe recipe) {
    recipe_ = std::move(recipe);
    fit();
    setAccessibleName(shownText(figure_.figure.title));
    setAccessibleDescription(shownText(figure_.figure.description));
}

study::SizedFigure StudyPicture::forFile() const {
    return recipe_(FileWidth, FileHeight);
}

void StudyPicture::fit() {
    if (!recipe_) {
        return;
    }
    const double width = viewport()->width() / pixelsPerTwip();
    const double height = viewport()->height() / pixelsPerTwip();
    figure_ = recipe_(std::max(width, LeastWidth), std::max(height, LeastHeight));
    const auto toPixels = [](double twips) {
        return static_cast<int>(std::floor(twips * pixelsPerTwip()));
    };
    ground_->setMinimumSize(toPixels(figure_.width), toPixels(figure_.height));
    ground_->update();
}

void StudyPicture::resizeEvent(QResizeEvent* event) {
    QScrollArea::resizeEvent(event);
    enterPaint([this] { fit(); });
}

bool StudyPicture::eventFilter(QObject* watched, QEvent* event) {
    if (watched == ground_ && event->type() == QEvent::Paint) {
        enterPaint([this] { paint(); });
        return true;
    }
    return QScrollArea::eventFilter(watched, event);
}

void StudyPicture::paint() {
    QPainter painter(ground_);
    painter.fillRect(ground_->rect(), QColor(PictureBack.red, PictureBack.green, PictureBack.blue));
    if (figure_.figure.draw) {
        painter.scale(pixelsPerTwip(), pixelsPerTwip());
        PainterSurface surface(painter);
        figure_.figure.draw(surface);
    }
}

} // namespace korvane
