#include "app/path/pathsheet.h"

#include "app/path/pathnumbers.h"
#include "app/path/pathpainter.h"
#include "app/path/seamtrack.h"
#include "look/scale.h"
#include "look/seam.h"
#include "look/tokens.h"
#include "look/type.h"

#include <QPainter>

#include <algorithm>

namespace app {

namespace {

constexpr std::size_t longPath = 4000;  // points
constexpr std::size_t mostParts = 8;    // halos that are drawn one by one
constexpr int bands = 8;

}  // namespace

PathSheet::PathSheet(const SeamTrack* seams)
    : seams_(seams), moves_(std::make_shared<std::vector<PathMove>>()) {}

void PathSheet::setMoves(const Moves& moves) {
    moves_ = moves;
    points_ = 0;
    for (const PathMove& move : *moves) {
        points_ += move.path.size() + move.corner.size();
    }
    chosenMoves_ = movesOf(chosen_);
    invalidate();
}

bool PathSheet::isLong() const {
    return points_ > longPath;
}

std::vector<std::size_t> PathSheet::movesOf(const QSet<int>& lines) const {
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < moves_->size() && !lines.isEmpty(); ++i) {
        if (lines.contains((*moves_)[i].line)) {
            found.push_back(i);
        }
    }
    return found;
}

void PathSheet::draw(const Camera& camera, const Look& look) {
    begin(camera, look);
    {
        QPainter painter(&base_);
        drawBase(&painter, camera.area());
    }
    extendSeams();
    drawOver();
    band_ = bands + 1;
}

void PathSheet::begin(const Camera& camera, const Look& look) {
    camera_ = camera;
    look_ = look;
    seen_ = seenMoves(camera, *moves_);
    middle_ = middleOf(camera, *moves_);
    const QSize pixels = look.size * look.pixelRatio;
    for (QPixmap* layer : {&base_, &over_}) {
        if (layer->size() != pixels) {
            *layer = QPixmap(pixels);
        }
        layer->setDevicePixelRatio(look.pixelRatio);
    }
    pieces_.clear();
    firstPiece_ = seams_->firstPiece();
    band_ = 0;
    base_.fill(QColor(::look::white));
    over_.fill(Qt::transparent);
}

/// Whole pixels, from the top.
QRectF PathSheet::bandAt(int band) const {
    const QRect area = camera_.area().toAlignedRect();
    const int top = area.top() + area.height() * band / bands;
    return QRect(QPoint(area.left(), top),
                 QPoint(area.right(), area.top() + area.height() * (band + 1) / bands - 1));
}

QRectF PathSheet::drawBand() {
    if (base_.isNull() || band_ > bands) {
        return {};
    }
    if (band_ == bands) {
        drawOver();
        ++band_;
        return camera_.area();
    }
    if (band_ == 0) {
        extendSeams();  // their pieces; what is drawn of them here, the bands draw anew
    }
    const QRectF part = bandAt(band_++);
    QPainter painter(&base_);
    drawBase(&painter, part);
    return part;
}

void PathSheet::drawBase(QPainter* painter, const QRectF& part) const {
    PathPainter path(painter, camera_);
    path.setPart(part);
    path.setDraft(look_.draft);
    path.paintGround(look_.ground);
    path.paintMoves(*moves_, seen_, chosenMoves_);
    const double width = PathPainter::seamWidth(camera_);
    painter->setClipRect(part);
    for (const SeenPiece& piece : pieces_) {
        if (piece.drawnPx > 0 &&
            piece.track.boundingRect().adjusted(-width, -width, width, width).intersects(part)) {
            look::paintBead(painter, piece.track, width, 0, piece.ended);
        }
    }
}

void PathSheet::drawOver() {
    over_.fill(Qt::transparent);
    QPainter painter(&over_);
    PathPainter path(&painter, camera_);
    if (!look_.draft) {
        path.paintPoints(*moves_, seen_);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setFont(look::font(look::Size::Caption));
        paintNumbers(&painter, camera_, *moves_, middle_);
    }
    path.paintFrame(look_.title, look_.barText);
}

/// Draws a few moves anew with what lies around them.
QRectF PathSheet::redrawAround(const std::vector<std::size_t>& moves) {
    const double around = PathPainter::seamWidth(camera_) / 2 + PathPainter::haloBeyond * look::factor() + 2;
    QRectF all;
    QPainter painter(&base_);
    for (const std::size_t move : moves) {
        const QRectF part = QRectF(seen_[move].box.adjusted(-around, -around, around, around).toAlignedRect())
                                .intersected(camera_.area());
        if (!part.isEmpty()) {
            drawBase(&painter, part);
        }
        all = all.united(part);
    }
    return all;
}

QRectF PathSheet::choose(const QSet<int>& lines) {
    const std::vector<std::size_t> before = chosenMoves_;
    chosen_ = lines;
    chosenMoves_ = movesOf(lines);
    if (base_.isNull() || before.size() + chosenMoves_.size() > mostParts || seen_.size() != moves_->size()) {
        invalidate();
        return camera_.area();
    }
    const double tag = look::px(48);
    const QRectF changed = redrawAround(before).united(redrawAround(chosenMoves_));
    return changed.isEmpty() ? changed : changed.adjusted(-tag, -tag, tag, tag);
}

QRectF PathSheet::extendSeams() {
    if (base_.isNull() || seams_->firstPiece() > firstPiece_ + int(pieces_.size())) {
        return {};
    }
    const double width = PathPainter::seamWidth(camera_);
    const int end = seams_->firstPiece() + int(seams_->pieces().size());
    const int last = firstPiece_ + int(pieces_.size()) - 1;
    QRectF drawn;
    QPainter painter(&base_);
    for (int number = std::max({last, seams_->firstPiece(), 0}); number < end; ++number) {
        pieces_.resize(std::size_t(std::max(int(pieces_.size()), number - firstPiece_ + 1)));
        SeenPiece& seen = pieces_[std::size_t(number - firstPiece_)];
        const Polyline& piece = seams_->pieces()[std::size_t(number - seams_->firstPiece())];
        const bool ended = number + 1 < end || !seams_->emitting();
        const int before = std::max(0, seen.track.size() - 2);
        extendSeen(camera_, piece, seen.taken, &seen.track);
        seen.taken = piece.size();
        const double length = look::lengthOf(seen.track);
        if (length > seen.drawnPx || ended != seen.ended) {
            look::paintBead(&painter, seen.track, width, seen.drawnPx, ended);
            drawn = drawn.united(QPolygonF(seen.track.mid(before)).boundingRect());
            seen.drawnPx = length;
            seen.ended = ended;
        }
    }
    return drawn.isNull() ? drawn : drawn.adjusted(-width, -width, width, width);
}

void PathSheet::paint(QPainter* painter) const {
    painter->drawPixmap(0, 0, base_);
    painter->drawPixmap(0, 0, over_);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setFont(look::font(look::Size::Caption));
    constexpr std::size_t mostTags = 50;
    for (std::size_t i = 0; i < std::min(chosenMoves_.size(), mostTags); ++i) {
        paintTag(painter, camera_, (*moves_)[chosenMoves_[i]], middle_);
    }
    painter->restore();
}

}  // namespace app
