#include "info/AboutArtwork.h"

#include "appearance/AppIcon.h"

#include <QColor>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <QPolygonF>
#include <QRadialGradient>

#include <algorithm>
#include <array>

namespace {

const QColor flagRed(0xD5, 0x2B, 0x1E);
const QColor inkColour(0x2B, 0x36, 0x4A);

// A blank image of the logical size, and a painter with smoothing on it.
QImage blank(QSize size, qreal dpr)
{
    QImage image((QSizeF(size) * dpr).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(dpr);
    image.fill(Qt::transparent);
    return image;
}

void smooth(QPainter &p)
{
    p.setRenderHint(QPainter::Antialiasing);
    p.setRenderHint(QPainter::SmoothPixmapTransform);
}

// ---- the large scene ------------------------------------------------------

void paintStars(QPainter &p, const QSizeF &s)
{
    // Fixed places, so the picture is the same every time it opens.
    struct Star {
        double x, y, r;
    };
    static constexpr std::array<Star, 12> stars{{{0.12, 0.08, 1.4}, {0.30, 0.15, 1.0}, {0.46, 0.06, 1.6},
                                                 {0.58, 0.22, 1.0}, {0.20, 0.27, 1.2}, {0.88, 0.34, 1.0},
                                                 {0.08, 0.40, 1.0}, {0.40, 0.33, 1.3}, {0.93, 0.09, 1.2},
                                                 {0.70, 0.40, 0.9}, {0.27, 0.47, 0.9}, {0.53, 0.45, 1.1}}};
    p.setPen(Qt::NoPen);
    for (const Star &star : stars) {
        p.setBrush(QColor(255, 255, 240, 210));
        p.drawEllipse(QPointF(star.x * s.width(), star.y * s.height()), star.r, star.r);
    }
}

void paintMoon(QPainter &p, const QSizeF &s)
{
    const QPointF centre(0.76 * s.width(), 0.15 * s.height());
    const double r = 0.10 * s.width();
    QPainterPath disc;
    disc.addEllipse(centre, r, r);
    QPainterPath bite;
    bite.addEllipse(centre + QPointF(r * 0.55, -r * 0.25), r * 0.92, r * 0.92);

    QRadialGradient glow(centre, r * 2.6);
    glow.setColorAt(0, QColor(255, 244, 200, 70));
    glow.setColorAt(1, QColor(255, 244, 200, 0));
    p.setPen(Qt::NoPen);
    p.setBrush(glow);
    p.drawEllipse(centre, r * 2.6, r * 2.6);
    p.setBrush(QColor(0xFF, 0xF1, 0xC2));
    p.drawPath(disc.subtracted(bite));
}

void paintHills(QPainter &p, const QSizeF &s, double shelfTop)
{
    const double w = s.width();
    QPainterPath far;
    far.moveTo(0, shelfTop - 0.16 * s.height());
    far.cubicTo(0.25 * w, shelfTop - 0.26 * s.height(), 0.45 * w, shelfTop - 0.08 * s.height(), 0.70 * w,
                shelfTop - 0.18 * s.height());
    far.cubicTo(0.85 * w, shelfTop - 0.24 * s.height(), 0.95 * w, shelfTop - 0.16 * s.height(), w,
                shelfTop - 0.17 * s.height());
    far.lineTo(w, shelfTop);
    far.lineTo(0, shelfTop);
    far.closeSubpath();
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0x5A, 0x4A, 0x78, 200));
    p.drawPath(far);

    QPainterPath near;
    near.moveTo(0, shelfTop - 0.07 * s.height());
    near.cubicTo(0.30 * w, shelfTop - 0.13 * s.height(), 0.60 * w, shelfTop - 0.02 * s.height(), w,
                 shelfTop - 0.10 * s.height());
    near.lineTo(w, shelfTop);
    near.lineTo(0, shelfTop);
    near.closeSubpath();
    p.setBrush(QColor(0x3A, 0x33, 0x5C));
    p.drawPath(near);
}

// ---- the flag -------------------------------------------------------------

// A simple leaf of three pointed lobes and a stem, on a unit square.
QPolygonF leafOutline()
{
    static constexpr std::array<QPointF, 11> rightHalf{{{0.50, 0.10},
                                                       {0.59, 0.30},
                                                       {0.71, 0.25},
                                                       {0.67, 0.44},
                                                       {0.87, 0.38},
                                                       {0.78, 0.56},
                                                       {0.83, 0.62},
                                                       {0.60, 0.67},
                                                       {0.535, 0.72},
                                                       {0.535, 0.90},
                                                       {0.50, 0.90}}};
    QPolygonF leaf;
    for (const QPointF &pt : rightHalf)
        leaf << pt;
    // The left half mirrors the right, walked back up to the tip.
    for (auto it = rightHalf.rbegin() + 1; it != rightHalf.rend() - 1; ++it)
        leaf << QPointF(1.0 - it->x(), it->y());
    return leaf;
}

// ---- portraits --------------------------------------------------------------

struct Look {
    QColor backdropTop;
    QColor backdropBottom;
    QColor shirt;
    QColor skin;
    QColor hair;
    bool longHair;
    bool glasses;
};

Look lookOf(Portrait which)
{
    switch (which) {
    case Portrait::OlderFirst:
        return {QColor(0xE8, 0xEE, 0xF4), QColor(0xB4, 0xC4, 0xD4), QColor(0x8A, 0x3A, 0x30), QColor(0xF3, 0xCD, 0xA8),
                QColor(0x4A, 0x30, 0x20), true, false};
    case Portrait::OlderSecond:
        // Darker backdrop and a light shirt, so the two stay apart in sepia.
        return {QColor(0x6E, 0x86, 0x70), QColor(0x3E, 0x52, 0x42), QColor(0xE4, 0xDC, 0xC8), QColor(0xF3, 0xCD, 0xA8),
                QColor(0x4A, 0x30, 0x20), false, false};
    case Portrait::Recent:
        break;
    }
    return {QColor(0x9F, 0xDB, 0xD2), QColor(0x4F, 0xA3, 0x9C), QColor(0x2F, 0x5D, 0x8A), QColor(0xF1, 0xC7, 0xA1),
            QColor(0x8C, 0x80, 0x78), false, true};
}

// A friendly head-and-shoulders figure filling `area`.
void paintPerson(QPainter &p, const QRectF &area, const Look &look)
{
    const double w = area.width();
    const double h = area.height();
    const auto at = [&](double fx, double fy) { return QPointF(area.left() + fx * w, area.top() + fy * h); };
    const double headR = std::min(0.24 * w, 0.21 * h);
    const QPointF head = at(0.5, 0.42);

    p.save();
    p.setClipRect(area, Qt::IntersectClip);
    QLinearGradient backdrop(area.topLeft(), area.bottomLeft());
    backdrop.setColorAt(0, look.backdropTop);
    backdrop.setColorAt(1, look.backdropBottom);
    p.fillRect(area, backdrop);
    p.setPen(Qt::NoPen);

    if (look.longHair) {
        p.setBrush(look.hair);
        p.drawRoundedRect(QRectF(head.x() - headR * 1.15, head.y() - headR * 1.1, headR * 2.3, headR * 2.35), headR,
                          headR);
    }

    // Shoulders, then neck and head on top.
    p.setBrush(look.shirt);
    p.drawEllipse(QRectF(at(0.08, 0.72), at(0.92, 1.35)));
    p.setBrush(look.skin.darker(108));
    p.drawRect(QRectF(head.x() - headR * 0.38, head.y() + headR * 0.6, headR * 0.76, headR * 0.9));
    p.setBrush(look.shirt.lighter(125));
    p.drawChord(QRectF(head.x() - headR * 0.5, at(0, 0.72).y() - headR * 0.35, headR, headR * 0.7), 180 * 16,
                180 * 16);
    p.setBrush(look.skin);
    p.drawEllipse(head, headR * 0.92, headR);

    // Hair on top of the head: the upper part of a slightly larger head.
    QPainterPath cap;
    cap.addEllipse(head + QPointF(0, -headR * 0.12), headR * 1.0, headR * 0.98);
    QPainterPath above;
    above.addRect(QRectF(head.x() - headR * 2, head.y() - headR * 2, headR * 4, headR * 1.55));
    p.setBrush(look.hair);
    p.drawPath(cap.intersected(above));

    // Eyes, rosy cheeks and a smile.
    p.setBrush(inkColour);
    const double eye = std::max(1.2, headR * 0.09);
    p.drawEllipse(head + QPointF(-headR * 0.36, headR * 0.05), eye, eye);
    p.drawEllipse(head + QPointF(headR * 0.36, headR * 0.05), eye, eye);
    p.setBrush(QColor(0xF0, 0x8C, 0x8C, 90));
    p.drawEllipse(head + QPointF(-headR * 0.55, headR * 0.35), headR * 0.16, headR * 0.12);
    p.drawEllipse(head + QPointF(headR * 0.55, headR * 0.35), headR * 0.16, headR * 0.12);
    p.setBrush(Qt::NoBrush);
    const QPen line(inkColour, std::max(1.0, headR * 0.08), Qt::SolidLine, Qt::RoundCap);
    p.setPen(line);
    if (look.glasses) {
        const double lens = headR * 0.24;
        p.drawEllipse(head + QPointF(-headR * 0.36, headR * 0.05), lens, lens);
        p.drawEllipse(head + QPointF(headR * 0.36, headR * 0.05), lens, lens);
        p.drawLine(head + QPointF(-headR * 0.12, headR * 0.02), head + QPointF(headR * 0.12, headR * 0.02));
    }
    p.drawArc(QRectF(head.x() - headR * 0.35, head.y() + headR * 0.05, headR * 0.7, headR * 0.55), 200 * 16,
              140 * 16);
    p.restore();
}

// Old photo tones: grey values pushed towards warm brown.
void fadeToSepia(QImage &image)
{
    for (int y = 0; y < image.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const QRgb c = line[x];
            const int grey = (qRed(c) * 30 + qGreen(c) * 59 + qBlue(c) * 11) / 100;
            line[x] = qRgba(std::min(255, grey + 38), std::min(255, grey + 16), std::max(0, grey - 12), qAlpha(c));
        }
    }
}

} // namespace

QImage drawAboutScene(QSize size, qreal dpr)
{
    QImage image = blank(size, dpr);
    if (size.isEmpty())
        return image;
    const QSizeF s(size);
    const double shelfTop = 0.84 * s.height();

    QPainter p(&image);
    smooth(p);
    QPainterPath frame;
    frame.addRoundedRect(QRectF(QPointF(0, 0), s), 10, 10);
    p.setClipPath(frame);

    QLinearGradient sky(0, 0, 0, shelfTop);
    sky.setColorAt(0.0, QColor(0x1C, 0x24, 0x48));
    sky.setColorAt(0.55, QColor(0x3E, 0x4F, 0x86));
    sky.setColorAt(0.85, QColor(0xC9, 0x86, 0x8C));
    sky.setColorAt(1.0, QColor(0xF4, 0xB2, 0x76));
    p.fillRect(QRectF(0, 0, s.width(), shelfTop), sky);
    paintStars(p, s);
    paintMoon(p, s);
    paintHills(p, s, shelfTop);

    // The shelf, with a lighter front edge.
    p.fillRect(QRectF(0, shelfTop, s.width(), s.height() - shelfTop), QColor(0x8A, 0x5A, 0x3B));
    p.fillRect(QRectF(0, shelfTop, s.width(), 4), QColor(0xB0, 0x7A, 0x52));

    // The clock stands on the shelf in a warm glow; its legs end just above
    // the bottom of the icon square.
    const double side = 0.80 * s.width();
    const QRectF clock(QPointF((s.width() - side) / 2, shelfTop + 2 - side * 0.955), QSizeF(side, side));
    QRadialGradient glow(clock.center(), side * 0.7);
    glow.setColorAt(0, QColor(255, 214, 150, 110));
    glow.setColorAt(1, QColor(255, 214, 150, 0));
    p.setPen(Qt::NoPen);
    p.setBrush(glow);
    p.drawEllipse(clock.center(), side * 0.7, side * 0.7);
    p.setBrush(QColor(0, 0, 0, 60));
    p.drawEllipse(QPointF(clock.center().x(), shelfTop + 3), side * 0.36, 3.5);
    p.drawImage(clock, drawAppIcon(qRound(side * dpr)));
    p.end();
    return image;
}

QImage drawCanadaFlag(QSize size, qreal dpr)
{
    QImage image = blank(size, dpr);
    if (size.isEmpty())
        return image;
    const QRectF all(QPointF(0, 0), QSizeF(size));
    const double band = all.width() / 4;

    QPainter p(&image);
    smooth(p);
    p.fillRect(all, Qt::white);
    p.fillRect(QRectF(0, 0, band, all.height()), flagRed);
    p.fillRect(QRectF(all.width() - band, 0, band, all.height()), flagRed);

    // The leaf fits a square in the middle of the white band.
    const double leafSide = std::min(all.width() / 2, all.height()) * 0.9;
    p.save();
    p.translate(all.center() - QPointF(leafSide / 2, leafSide / 2));
    p.scale(leafSide, leafSide);
    p.setPen(Qt::NoPen);
    p.setBrush(flagRed);
    p.drawPolygon(leafOutline());
    p.restore();

    // A hairline edge keeps the white band apart from a light background.
    p.setPen(QPen(QColor(0, 0, 0, 70), 1));
    p.setBrush(Qt::NoBrush);
    p.drawRect(all.adjusted(0.5, 0.5, -0.5, -0.5));
    p.end();
    return image;
}

QImage drawPortrait(Portrait which, QSize size, qreal dpr)
{
    QImage image = blank(size, dpr);
    if (size.isEmpty())
        return image;
    const Look look = lookOf(which);
    const QRectF all(QPointF(0, 0), QSizeF(size));

    QPainter p(&image);
    smooth(p);
    if (which == Portrait::Recent) {
        QPainterPath frame;
        frame.addRoundedRect(all, 8, 8);
        p.setClipPath(frame);
        paintPerson(p, all, look);
        p.end();
        return image;
    }

    // An old instant photo: white border, wider at the bottom, a little
    // faded, lying slightly askew.
    const double tilt = which == Portrait::OlderFirst ? -5.0 : 4.0;
    const QRectF card = all.adjusted(all.width() * 0.08, all.height() * 0.05, -all.width() * 0.08,
                                     -all.height() * 0.05);
    const double border = card.width() * 0.08;
    const QRectF photoArea = card.adjusted(border, border, -border, -border * 3);

    QImage photo = blank(photoArea.size().toSize(), dpr);
    {
        QPainter pp(&photo);
        smooth(pp);
        paintPerson(pp, QRectF(QPointF(0, 0), photoArea.size()), look);
    }
    photo.convertTo(QImage::Format_ARGB32);
    fadeToSepia(photo);

    p.translate(all.center());
    p.rotate(tilt);
    p.translate(-all.center());
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0, 0, 0, 45));
    p.drawRoundedRect(card.translated(1.5, 2), 2, 2);
    p.setBrush(QColor(0xFB, 0xF8, 0xF0));
    p.setPen(QPen(QColor(0, 0, 0, 40), 0.8));
    p.drawRoundedRect(card, 2, 2);
    p.drawImage(photoArea.topLeft(), photo);
    p.end();
    return image;
}
