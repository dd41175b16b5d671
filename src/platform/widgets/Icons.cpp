#include "Icons.h"

#include "Resources.h"

#include <QFile>
#include <QGuiApplication>
#include <QHash>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>

namespace
{

// A key's file is the key in lower case with dashes for blanks.
constexpr const char* drawings[] = {"Box Critical",
                                    "Box Information",
                                    "Box Question",
                                    "Box Warning",
                                    "Calculate",
                                    "Cancel",
                                    "Column",
                                    "Column Add",
                                    "Column Delete",
                                    "Column Edit",
                                    "Columns",
                                    "Criteria",
                                    "DB",
                                    "DB Add",
                                    "DB Delete",
                                    "DB Edit",
                                    "DBs",
                                    "DSN Admin",
                                    "DSN Ghost",
                                    "DSN Refresh",
                                    "Datasource",
                                    "Drag Column",
                                    "Drag Database",
                                    "Drag Field",
                                    "Drag File",
                                    "Drag Table",
                                    "Drag User",
                                    "EMail",
                                    "Error",
                                    "Export",
                                    "Field",
                                    "Field Add",
                                    "Field Delete",
                                    "Field Edit",
                                    "Fields",
                                    "File",
                                    "File Add",
                                    "File Delete",
                                    "File Edit",
                                    "Files",
                                    "Format",
                                    "Import",
                                    "Information",
                                    "Lookup",
                                    "More",
                                    "Next Number",
                                    "No Drop",
                                    "OK",
                                    "Padlock",
                                    "Refresh",
                                    "Special Column Edit",
                                    "Special Columns",
                                    "Table",
                                    "Table Add",
                                    "Table Delete",
                                    "Table Edit",
                                    "Tables",
                                    "Undo",
                                    "Up1",
                                    "User",
                                    "User Add",
                                    "User Delete",
                                    "User Edit",
                                    "Users",
                                    "ViewData",
                                    "WWW",
                                    "Warning"};

// Larger pictures with a shape of their own.
constexpr std::array artworks{"Blue Corner", "Logo"};

const QHash<QString, QString>& paths()
{
    static const QHash<QString, QString> byKey = [] {
        QHash<QString, QString> made;
        const auto add = [&made](const char* key, QLatin1String folder) {
            const QString name = QLatin1String(key);
            made.insert(name, folder + QString(name).replace(' ', '-').toLower() + QLatin1String(".svg"));
        };
        for (const char* key : drawings)
            add(key, QLatin1String(":/icons/"));
        for (const char* key : artworks)
            add(key, QLatin1String(":/artwork/"));
        return made;
    }();
    return byKey;
}

// A reference from here keeps the resources in a program that is linked from the static libraries.
[[maybe_unused]] const bool resourcesLinked = (initQuorvaneResources(), true);

// The relative luminance of the Web Content Accessibility Guidelines, 0 to 1.
double luminance(const QColor& colour)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

double contrast(const QColor& a, const QColor& b)
{
    const double one = luminance(a) + 0.05;
    const double other = luminance(b) + 0.05;
    return std::max(one, other) / std::min(one, other);
}

QColor mixed(const QColor& a, const QColor& b, double shareOfB)
{
    const auto part = [shareOfB](float x, float y) { return x + (y - x) * float(shareOfB); };
    return QColor::fromRgbF(part(a.redF(), b.redF()), part(a.greenF(), b.greenF()), part(a.blueF(), b.blueF()));
}

// Web Content Accessibility Guidelines 2.1, success criterion 1.4.11: a graphic that carries a meaning has this
// contrast. On a ground of middle lightness an accent moves towards the text colour until it does.
QColor readable(const QColor& accent, const QColor& text, const QColor& base, const QColor& window)
{
    constexpr double wanted = 3.0;
    QColor colour = accent;
    for (int tenths = 1; tenths <= 10 && std::min(contrast(colour, base), contrast(colour, window)) < wanted; ++tenths)
        colour = mixed(accent, text, tenths / 10.0);
    return colour;
}

// What the drawings are drawn in: ink, and three accents told apart without telling red from green. In these colours
// they look right in any viewer on white; painting puts the palette's colours in their place.
constexpr std::array drawn{"#46505d", "#2f6fc4", "#b9770e", "#c8402f"};
using Inks = std::array<QRgb, drawn.size()>;

constexpr float disabledOpacity = 0.45f;

struct Colours {
    Inks normal{};
    Inks disabled{};
    Inks selected{};
    bool operator==(const Colours&) const = default;
};

Colours coloursOf(const QPalette& palette)
{
    const QColor base = palette.color(QPalette::Active, QPalette::Base);
    const QColor window = palette.color(QPalette::Active, QPalette::Window);
    const QColor text = palette.color(QPalette::Active, QPalette::Text);
    const bool dark = luminance(base) < luminance(text);
    const std::array<QRgb, 3> accents =
        dark ? std::array<QRgb, 3>{0x6cacf5, 0xe3ab4a, 0xf0806f} : std::array<QRgb, 3>{0x2f6fc4, 0xb9770e, 0xc8402f};

    Colours made;
    made.normal[0] = readable(mixed(text, base, 0.25), text, base, window).rgb();
    for (size_t i = 0; i < accents.size(); ++i)
        made.normal[i + 1] = readable(QColor(accents[i]), text, base, window).rgb();
    made.disabled.fill(made.normal[0]);
    made.selected.fill(palette.color(QPalette::Active, QPalette::HighlightedText).rgb());
    return made;
}

struct Rendering {
    QString path;
    QSize pixels;
    double ratio = 1;
    QIcon::Mode mode = QIcon::Normal;
    bool operator==(const Rendering&) const = default;
};

size_t qHash(const Rendering& rendering, size_t seed = 0)
{
    return qHashMulti(seed, rendering.path, rendering.pixels.width(), rendering.pixels.height(), rendering.ratio,
                      int(rendering.mode));
}

// What has been rendered, in the colours of one palette.
class Atelier
{
public:
    QPixmap get(const Rendering& wanted)
    {
        followPalette();
        const auto found = _rendered.constFind(wanted);
        if (found != _rendered.constEnd())
            return *found;
        const QPixmap pixmap = render(wanted);
        _rendered.insert(wanted, pixmap);
        return pixmap;
    }

private:
    void followPalette()
    {
        const QPalette palette = QGuiApplication::palette();
        if (palette.cacheKey() == _paletteKey)
            return;
        _paletteKey = palette.cacheKey();
        const Colours colours = coloursOf(palette);
        if (colours == _colours)
            return;
        _colours = colours;
        _rendered.clear();
    }

    const Inks& inks(QIcon::Mode mode) const
    {
        if (mode == QIcon::Disabled)
            return _colours.disabled;
        return mode == QIcon::Selected ? _colours.selected : _colours.normal;
    }

    QPixmap render(const Rendering& wanted) const
    {
        QPixmap pixmap(wanted.pixels);
        pixmap.fill(Qt::transparent);
        QFile file(wanted.path);
        if (file.open(QIODevice::ReadOnly)) {
            QByteArray drawing = file.readAll();
            for (size_t i = 0; i < drawn.size(); ++i)
                // In capitals, so that no later turn takes it for a drawn colour.
                drawing.replace(drawn[i], QColor(inks(wanted.mode)[i]).name().toUpper().toLatin1());
            QSvgRenderer renderer(drawing);
            renderer.setAspectRatioMode(Qt::KeepAspectRatio);
            QPainter painter(&pixmap);
            renderer.render(&painter, QRectF(QPointF(), QSizeF(wanted.pixels)));
            if (wanted.mode == QIcon::Disabled) {
                // As a whole, since fills and strokes that overlap would otherwise fade less.
                painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
                painter.fillRect(pixmap.rect(), QColor::fromRgbF(0, 0, 0, disabledOpacity));
            }
        }
        pixmap.setDevicePixelRatio(wanted.ratio);
        return pixmap;
    }

    qint64 _paletteKey = 0;
    Colours _colours;
    QHash<Rendering, QPixmap> _rendered;
};

Atelier& atelier()
{
    static std::unique_ptr<Atelier> shared;
    if (!shared) {
        shared = std::make_unique<Atelier>();
        // Pixmaps may not outlive the application object.
        qAddPostRoutine([] { shared.reset(); });
    }
    return *shared;
}

class Engine : public QIconEngine
{
public:
    explicit Engine(QString path) : _path(std::move(path)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override
    {
        const qreal ratio = painter->device()->devicePixelRatio();
        painter->drawPixmap(rect, scaledPixmap(rect.size() * ratio, mode, state, ratio));
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        return scaledPixmap(size, mode, state, 1);
    }

    // The size is in device pixels, the scale is the pixel ratio that they are meant for.
    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State, qreal scale) override
    {
        if (size.isEmpty())
            return {};
        return atelier().get({_path, size, scale, mode == QIcon::Active ? QIcon::Normal : mode});
    }

    QString key() const override { return QStringLiteral("quorvane"); }
    QIconEngine* clone() const override { return new Engine(_path); }

private:
    QString _path;
};

} // namespace

QIcon Icons::icon(const QString& key)
{
    const QString path = paths().value(key);
    return path.isEmpty() ? QIcon() : QIcon(new Engine(path));
}

QPixmap Icons::pixmap(const QString& key, QSize size, qreal devicePixelRatio)
{
    const QString path = paths().value(key);
    if (path.isEmpty() || size.isEmpty())
        return {};
    return atelier().get({path, size * devicePixelRatio, devicePixelRatio, QIcon::Normal});
}

bool Icons::contains(const QString& key)
{
    return paths().contains(key);
}

QStringList Icons::keys()
{
    QStringList all = paths().keys();
    all.sort();
    return all;
}
