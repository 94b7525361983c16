#include "appearance/AppIcon.h"

#include <QColor>
#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <QPixmap>
#include <QPointF>

#include <cmath>
#include <numbers>

namespace {

const QColor rimColour(0xE8, 0x55, 0x4A);
const QColor rimShade(0xC4, 0x40, 0x38);
const QColor bellColour(0xF5, 0xB4, 0x3C);
const QColor bellShade(0xD9, 0x94, 0x22);
const QColor faceColour(0xFF, 0xFA, 0xF0);
const QColor inkColour(0x2B, 0x36, 0x4A);
const QColor tickColour(0x9A, 0xA3, 0xB0);
// Legs, posts and hammer: lighter than the hands so they still show on dark panels.
const QColor metalColour(0x5E, 0x6A, 0x7D);

// Drawing happens on a 256-unit square; the painter scales it to the size.
constexpr double unit = 256.0;
const QPointF centre(128.0, 142.0);
constexpr double rimRadius = 94.0;
constexpr double faceRadius = 78.0;

// A point at a clock angle (degrees clockwise from twelve) and distance.
QPointF onDial(double degrees, double distance)
{
    const double radians = degrees * std::numbers::pi / 180.0;
    return centre + QPointF(std::sin(radians) * distance, -std::cos(radians) * distance);
}

QPen roundPen(const QColor &colour, double width)
{
    return QPen(colour, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

void drawBell(QPainter &p, double degrees)
{
    // A short post from the rim, then the bell dome sitting on it, its open
    // side towards the face.
    p.setPen(roundPen(metalColour, 10));
    p.drawLine(onDial(degrees, rimRadius - 6), onDial(degrees, rimRadius + 14));

    p.save();
    p.translate(onDial(degrees, rimRadius + 14));
    p.rotate(degrees);
    QPainterPath dome;
    dome.moveTo(-36, 0);
    dome.arcTo(QRectF(-36, -36, 72, 72), 180, -180);
    dome.closeSubpath();
    p.setPen(Qt::NoPen);
    p.setBrush(bellColour);
    p.drawPath(dome);
    p.setBrush(bellShade);
    p.drawRoundedRect(QRectF(-42, -6, 84, 12), 6, 6);
    p.setBrush(bellColour);
    p.drawEllipse(QPointF(0, -40), 8, 8);
    p.restore();
}

void drawLeg(QPainter &p, double degrees)
{
    p.setPen(roundPen(metalColour, 16));
    p.drawLine(onDial(degrees, rimRadius - 10), onDial(degrees, rimRadius + 22));
}

void drawHand(QPainter &p, double degrees, double length, double width)
{
    p.setPen(roundPen(inkColour, width));
    p.drawLine(centre, onDial(degrees, length));
}

void paintClock(QPainter &p, int size)
{
    const bool tiny = size < 32;

    drawLeg(p, 215);
    drawLeg(p, 145);

    // The hammer between the bells.
    p.setPen(roundPen(metalColour, 10));
    p.drawLine(onDial(0, rimRadius - 4), onDial(0, rimRadius + 20));
    p.setPen(Qt::NoPen);
    p.setBrush(metalColour);
    p.drawRoundedRect(QRectF(centre.x() - 20, centre.y() - rimRadius - 30, 40, 14), 7, 7);

    drawBell(p, -40);
    drawBell(p, 40);

    // Rim, with a darker inner line for a little depth, then the face.
    p.setPen(Qt::NoPen);
    p.setBrush(rimColour);
    p.drawEllipse(centre, rimRadius, rimRadius);
    p.setBrush(rimShade);
    p.drawEllipse(centre, faceRadius + 6, faceRadius + 6);
    p.setBrush(faceColour);
    p.drawEllipse(centre, faceRadius, faceRadius);

    // Hour marks: only the quarters are readable at small sizes, and at the
    // smallest even those are just noise.
    for (int hour = 0; hour < 12 && size >= 24; ++hour) {
        const bool quarter = hour % 3 == 0;
        if (tiny && !quarter)
            continue;
        const double outer = faceRadius - 10;
        const double inner = quarter ? faceRadius - 24 : faceRadius - 17;
        p.setPen(roundPen(quarter ? inkColour : tickColour, quarter ? 8 : 6));
        p.drawLine(onDial(hour * 30.0, inner), onDial(hour * 30.0, outer));
    }

    // Ten past ten, the friendliest face a clock can pull. Hands are thicker
    // at small sizes so they survive the scaling.
    drawHand(p, 305, 40, tiny ? 18 : 13);
    drawHand(p, 60, 58, tiny ? 14 : 9);

    p.setPen(Qt::NoPen);
    p.setBrush(rimColour);
    p.drawEllipse(centre, 10, 10);
}

} // namespace

QImage drawAppIcon(int size)
{
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    if (size <= 0)
        return image;
    QPainter p(&image);
    p.setRenderHint(QPainter::Antialiasing);
    p.scale(size / unit, size / unit);
    paintClock(p, size);
    p.end();
    return image;
}

QIcon makeAppIcon()
{
    // The program's resources hold the build's PNGs; QIcon reads each only
    // when a size is first asked for.
    QIcon icon;
    for (const int size : {16, 22, 24, 32, 48, 64, 128})
        icon.addFile(QStringLiteral(":/icons/%1.png").arg(size), QSize(size, size));
    return icon;
}
