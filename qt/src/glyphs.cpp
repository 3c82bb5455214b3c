#include "glyphs.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <map>
#include <sstream>

namespace Kiv_v4::qt::detail {

namespace {

/// A drawing on a square of 16 units, in a language of one letter and numbers: M x y begins a line,
/// L x y goes on, Q cx cy x y goes on in a curve, Z closes, E x y r is a circle, R x y w h a
/// rectangle. What stands behind F is filled.
struct Glyph
{
    const char* drawing;
    QRgb color = 0; ///< 0 for that of texts.
};

// Of middle lightness, to be told from light and dark grounds alike.
constexpr QRgb kCameraColor = 0xff3f86c9;
constexpr QRgb kLightColor = 0xffc98712;
constexpr QRgb kMaterialColor = 0xffa663b8;
constexpr QRgb kJointColor = 0xff3f9a5a;

const std::map<std::string, Glyph>& glyphs()
{
    static const std::map<std::string, Glyph> all{
        {"areaLight", {"R 3 2.5 10 4 M 4 9 L 3 13.5 M 8 9 L 8 13.5 M 12 9 L 13 13.5", kLightColor}},
        {"camera", {"R 1.5 5 9 7.5 M 10.5 8 L 14.5 5.5 L 14.5 12 L 10.5 9.5", kCameraColor}},
        {"delete", {"M 3.5 3.5 L 12.5 12.5 M 12.5 3.5 L 3.5 12.5"}},
        {"directionalLight",
         {"M 3 2.5 L 3 11 M 8 2.5 L 8 13 M 13 2.5 L 13 11 M 6 11 L 8 13.5 L 10 11 "
          "M 1.5 9.5 L 3 11.5 L 4.5 9.5 M 11.5 9.5 L 13 11.5 L 14.5 9.5",
          kLightColor}},
        {"file",
         {"M 3.5 1.5 L 9.5 1.5 L 12.5 4.5 L 12.5 14.5 L 3.5 14.5 Z M 9.5 1.5 L 9.5 4.5 "
          "L 12.5 4.5"}},
        {"frame",
         {"M 2 5 L 2 2 L 5 2 M 11 2 L 14 2 L 14 5 M 14 11 L 14 14 L 11 14 M 5 14 L 2 14 "
          "L 2 11 F E 8 8 1.8"}},
        {"group", {"M 1.5 12.5 L 1.5 3.5 L 6 3.5 L 7.5 5.5 L 14.5 5.5 L 14.5 12.5 Z"}},
        {"joint", {"E 4 12 2 E 12 4 2 M 5.5 10.5 L 10.5 5.5", kJointColor}},
        {"light",
         {"E 8 8 3 M 8 1.5 L 8 3 M 8 13 L 8 14.5 M 1.5 8 L 3 8 M 13 8 L 14.5 8", kLightColor}},
        {"material", {"E 8 8 6 M 4.8 7.2 Q 5.2 4.8 7.6 4.4", kMaterialColor}},
        {"mesh",
         {"M 8 1.5 L 13.8 4.7 L 13.8 11.3 L 8 14.5 L 2.2 11.3 L 2.2 4.7 Z M 2.2 4.7 L 8 8 "
          "L 13.8 4.7 M 8 8 L 8 14.5"}},
        {"mount",
         {"M 1.5 13.5 L 1.5 4 L 5.5 4 L 7 6 L 9 6 M 14.5 9.5 L 14.5 13.5 L 1.5 13.5 "
          "M 12 1.5 L 12 9 M 9.8 6.8 L 12 9.2 L 14.2 6.8"}},
        {"open",
         {"M 1.5 13 L 1.5 3.5 L 6 3.5 L 7.5 5.5 L 12.5 5.5 L 12.5 7.5 M 1.5 13 L 4 7.5 "
          "L 15 7.5 L 12.5 13 Z"}},
        {"plugIn",
         {"M 5.5 1.5 L 5.5 5 M 10.5 1.5 L 10.5 5 M 3.5 5 L 12.5 5 L 12.5 8 "
          "Q 12.5 11.5 8 11.5 Q 3.5 11.5 3.5 8 Z M 8 11.5 L 8 14.5"}},
        {"pointLight",
         {"E 8 8 2.6 M 8 1.5 L 8 3.5 M 8 12.5 L 8 14.5 M 1.5 8 L 3.5 8 M 12.5 8 L 14.5 8 "
          "M 3.4 3.4 L 4.8 4.8 M 11.2 11.2 L 12.6 12.6 M 3.4 12.6 L 4.8 11.2 M 11.2 4.8 "
          "L 12.6 3.4",
          kLightColor}},
        {"redo",
         {"M 10 2.5 L 13.5 6 L 10 9.5 M 13.5 6 L 7 6 Q 2.5 6 2.5 10 Q 2.5 13.5 7 13.5 "
          "L 10 13.5"}},
        {"save",
         {"M 2.5 2.5 L 11 2.5 L 13.5 5 L 13.5 13.5 L 2.5 13.5 Z M 5 2.5 L 5 6 L 10 6 "
          "L 10 2.5 M 4.5 13.5 L 4.5 9.5 L 11.5 9.5 L 11.5 13.5"}},
        {"scene", {"E 8 8 6.2 M 1.8 8 L 14.2 8 M 8 1.8 Q 2.8 8 8 14.2 M 8 1.8 Q 13.2 8 8 14.2"}},
        {"spotLight",
         {"M 6 2 L 10 2 L 11 6 L 5 6 Z M 5 8 L 2.5 14 M 8 8 L 8 14 M 11 8 L 13.5 14", kLightColor}},
        {"undo",
         {"M 6 2.5 L 2.5 6 L 6 9.5 M 2.5 6 L 9 6 Q 13.5 6 13.5 10 Q 13.5 13.5 9 13.5 "
          "L 6 13.5"}},
    };
    return all;
}

/// The lines and the filled shapes of a drawing.
struct Shapes
{
    QPainterPath lines;
    QPainterPath filled;
};

Shapes shapesOf(const char* drawing)
{
    Shapes shapes;
    auto* path = &shapes.lines;
    std::istringstream words(drawing);
    words.imbue(std::locale::classic());
    const auto number = [&words] {
        double value = 0;
        words >> value;
        return value;
    };
    const auto point = [&] {
        const auto x = number();
        return QPointF(x, number());
    };
    for (char letter = 0; words >> letter;) {
        if (letter == 'M') {
            path->moveTo(point());
        } else if (letter == 'L') {
            path->lineTo(point());
        } else if (letter == 'Q') {
            const auto middle = point();
            path->quadTo(middle, point());
        } else if (letter == 'Z') {
            path->closeSubpath();
        } else if (letter == 'E') {
            const auto centre = point();
            const auto radius = number();
            path->addEllipse(centre, radius, radius);
        } else if (letter == 'R') {
            const auto corner = point();
            const auto size = point();
            path->addRect(QRectF(corner, QSizeF(size.x(), size.y())));
        } else {
            path = &shapes.filled;
        }
    }
    return shapes;
}

QColor colorOf(QRgb wanted, QIcon::Mode mode)
{
    const auto palette = QGuiApplication::palette();
    switch (mode) {
    case QIcon::Disabled:
        return palette.color(QPalette::Disabled, QPalette::Text);
    case QIcon::Selected:
        return palette.color(QPalette::HighlightedText);
    default:
        return wanted ? QColor::fromRgb(wanted) : palette.color(QPalette::Text);
    }
}

/// Draws on a square of 16 units in the middle of `rect`.
class Engine : public QIconEngine
{
public:
    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override
    {
        const auto side = std::min(rect.width(), rect.height());
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.x() + (rect.width() - side) / 2.0,
                           rect.y() + (rect.height() - side) / 2.0);
        painter->scale(side / 16.0, side / 16.0);
        draw(*painter, mode);
        painter->restore();
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        return painted(*this, size, mode, state);
    }

private:
    virtual void draw(QPainter& painter, QIcon::Mode mode) = 0;
};

class GlyphEngine : public Engine
{
public:
    explicit GlyphEngine(const Glyph& glyph) : _shapes(shapesOf(glyph.drawing)), _color(glyph.color)
    {}

    [[nodiscard]] QIconEngine* clone() const override { return new GlyphEngine(*this); }

private:
    void draw(QPainter& painter, QIcon::Mode mode) override
    {
        const auto color = colorOf(_color, mode);
        painter.setPen(QPen(color, 1.3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPath(_shapes.lines);
        painter.fillPath(_shapes.filled, color);
    }

    Shapes _shapes;
    QRgb _color;
};

class LetterEngine : public Engine
{
public:
    explicit LetterEngine(QChar letter) : _letter(letter) {}

    [[nodiscard]] QIconEngine* clone() const override { return new LetterEngine(*this); }

private:
    void draw(QPainter& painter, QIcon::Mode mode) override
    {
        painter.setPen(QPen(colorOf(0, mode), 1.1));
        painter.drawRoundedRect(QRectF(1.5, 1.5, 13, 13), 3, 3);
        auto font = painter.font();
        font.setPixelSize(10);
        painter.setFont(font);
        painter.drawText(QRectF(1.5, 1.5, 13, 13), Qt::AlignCenter, _letter);
    }

    QChar _letter;
};

} // namespace

QIcon glyphIcon(const std::string& name)
{
    static std::map<std::string, QIcon> made;
    const auto known = glyphs().find(name);
    if (known == glyphs().end()) {
        return {};
    }
    auto& icon = made[name];
    if (icon.isNull()) {
        icon = QIcon(new GlyphEngine(known->second));
    }
    return icon;
}

QIcon letterIcon(QChar letter)
{
    return QIcon(new LetterEngine(letter));
}

QPixmap painted(QIconEngine& engine, const QSize& size, QIcon::Mode mode, QIcon::State state)
{
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    engine.paint(&painter, QRect(QPoint(), size), mode, state);
    return pixmap;
}

} // namespace Kiv_v4::qt::detail
