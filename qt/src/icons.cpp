#include "kiv/qt/icons.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPixmap>
#include <algorithm>
#include <array>
#include <cctype>
#include <string_view>

#include "kiv/uiInfoHandler.h"

#include "glyphs.h"
#include "texts.h"

namespace Kiv_v4::qt {

namespace {

using Icon = UIInfoHandler::Icon;

/// Words of node types and the glyph of the first that occurs in one.
constexpr std::array<std::pair<std::string_view, const char*>, 24> kTypeWords{{
    {"directional", "directionalLight"},
    {"distant", "directionalLight"},
    {"spot", "spotLight"},
    {"point", "pointLight"},
    {"area", "areaLight"},
    {"rectlight", "areaLight"},
    {"light", "light"},
    {"camera", "camera"},
    {"material", "material"},
    {"shader", "material"},
    {"mesh", "mesh"},
    {"geometry", "mesh"},
    {"shape", "mesh"},
    {"joint", "joint"},
    {"bone", "joint"},
    {"skel", "joint"},
    {"gateway", "file"},
    {"scene", "scene"},
    {"world", "scene"},
    {"root", "scene"},
    {"group", "group"},
    {"xform", "group"},
    {"transform", "group"},
    {"node", "group"},
}};

/// The glyph for a node type; null for one that is not known.
const char* glyphOfType(std::string type)
{
    std::ranges::transform(type, type.begin(), [](unsigned char c) { return std::tolower(c); });
    const auto found = std::ranges::find_if(kTypeWords, [&](const auto& word) {
        return type.find(word.first) != std::string::npos &&
               (word.first != "point" || type.find("light") != std::string::npos);
    });
    return found == kTypeWords.end() ? nullptr : found->second;
}

QIcon iconOfType(const SceneItem& item)
{
    for (const auto& type : item.ancestorNodeTypes()) {
        if (const auto* glyph = glyphOfType(type)) {
            return detail::glyphIcon(glyph);
        }
    }
    const auto type = detail::textOf(item.nodeType()).trimmed();
    return detail::letterIcon(type.isEmpty() ? QChar('?') : type.front().toUpper());
}

/// The icon with a smaller one in a corner.
class BadgedIcon : public QIconEngine
{
public:
    BadgedIcon(QIcon icon, QIcon badge, UIInfoHandler::BadgePosition position)
        : _icon(std::move(icon)), _badge(std::move(badge)), _position(position)
    {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override
    {
        _icon.paint(painter, rect, Qt::AlignCenter, mode, state);
        const auto size = rect.size() * 0.6;
        QRect corner(rect.topLeft(), size);
        if (_position == UIInfoHandler::UpperRight || _position == UIInfoHandler::LowerRight) {
            corner.moveRight(rect.right());
        }
        if (_position == UIInfoHandler::LowerLeft || _position == UIInfoHandler::LowerRight) {
            corner.moveBottom(rect.bottom());
        }
        _badge.paint(painter, corner, Qt::AlignCenter, mode, state);
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        return detail::painted(*this, size, mode, state);
    }
    [[nodiscard]] QIconEngine* clone() const override { return new BadgedIcon(*this); }

private:
    QIcon _icon;
    QIcon _badge;
    UIInfoHandler::BadgePosition _position;
};

} // namespace

QIcon namedIcon(const std::string& name)
{
    const auto drawn = detail::glyphIcon(name);
    return drawn.isNull() && !name.empty() ? QIcon::fromTheme(detail::textOf(name)) : drawn;
}

QIcon itemIcon(const SceneItem::Ptr& item)
{
    const auto handler = UIInfoHandler::uiInfoHandler(item->runTimeId());
    const auto wanted = handler ? handler->treeViewIcon(item) : Icon();
    auto icon = namedIcon(wanted.base);
    if (icon.isNull()) {
        icon = iconOfType(*item);
    }
    const auto badge =
        wanted.badgePosition == UIInfoHandler::NoBadge ? QIcon() : namedIcon(wanted.badge);
    return badge.isNull() ? icon : QIcon(new BadgedIcon(icon, badge, wanted.badgePosition));
}

} // namespace Kiv_v4::qt
