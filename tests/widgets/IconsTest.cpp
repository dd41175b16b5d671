#include "Icons.h"

#include "Resources.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <QSet>
#include <QXmlStreamReader>

#include <algorithm>
#include <cmath>
#include <ostream>
#include <vector>

// The macro declares a function of the global namespace.
static void dropQuorvaneResources()
{
    Q_CLEANUP_RESOURCE(quorvane);
}

namespace
{

const QStringList artworks{"Blue Corner", "Logo"};

QStringList iconKeys()
{
    QStringList keys = Icons::keys();
    for (const QString& artwork : artworks)
        keys.removeOne(artwork);
    return keys;
}

QPalette lightPalette()
{
    QPalette palette(QColor(0xefefef));
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Text, Qt::black);
    palette.setColor(QPalette::Highlight, QColor(0x1f6fb2));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

QPalette darkPalette()
{
    QPalette palette(QColor(0x2b2d30));
    palette.setColor(QPalette::Base, QColor(0x1e1f22));
    palette.setColor(QPalette::Text, QColor(0xdfe1e5));
    palette.setColor(QPalette::Highlight, QColor(0x9cc3ff));
    palette.setColor(QPalette::HighlightedText, Qt::black);
    return palette;
}

// Text and ground close to each other, as some high-brightness themes have them.
QPalette greyPalette()
{
    QPalette palette(QColor(0x8a8a8a));
    palette.setColor(QPalette::Base, QColor(0x909090));
    palette.setColor(QPalette::Text, Qt::black);
    return palette;
}

double luminance(QRgb colour)
{
    const auto linear = [](int part) {
        const double value = part / 255.0;
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(qRed(colour)) + 0.7152 * linear(qGreen(colour)) + 0.0722 * linear(qBlue(colour));
}

double contrast(QRgb a, QRgb b)
{
    const double one = luminance(a) + 0.05;
    const double other = luminance(b) + 0.05;
    return std::max(one, other) / std::min(one, other);
}

QImage shown(const QString& key, const QColor& ground, double ratio, QIcon::Mode mode = QIcon::Normal)
{
    QImage image(QSize(16, 16) * ratio, QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(ground);
    QPainter painter(&image);
    Icons::icon(key).paint(&painter, QRect(0, 0, 16, 16), Qt::AlignCenter, mode);
    painter.end();
    return image;
}

std::vector<double> contrasts(const QImage& image, const QColor& ground)
{
    std::vector<double> all;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            all.push_back(contrast(image.pixel(x, y), ground.rgb()));
    return all;
}

double shareAbove(const std::vector<double>& values, double limit)
{
    const auto above = std::count_if(values.begin(), values.end(), [limit](double value) { return value >= limit; });
    return double(above) / double(values.size());
}

double strongest(const std::vector<double>& values)
{
    return *std::max_element(values.begin(), values.end());
}

class IconsAndThePalette : public testing::Test
{
protected:
    void TearDown() override { QApplication::setPalette(_former); }

private:
    QPalette _former = QApplication::palette();
};

struct Ground {
    const char* name;
    QPalette (*palette)();
};

void PrintTo(const Ground& ground, std::ostream* out)
{
    *out << ground.name;
}

class IconsInPalette : public IconsAndThePalette, public testing::WithParamInterface<Ground>
{
protected:
    void SetUp() override
    {
        QApplication::setPalette(GetParam().palette());
        base = QApplication::palette().color(QPalette::Base);
    }

    QColor base;
};

INSTANTIATE_TEST_SUITE_P(Grounds, IconsInPalette,
                         testing::Values(Ground{"Light", &lightPalette}, Ground{"Dark", &darkPalette},
                                         Ground{"Grey", &greyPalette}),
                         [](const auto& tested) { return tested.param.name; });

} // namespace

TEST(Icons, KnowsTheKeysOfTreeToolbarsDragsPanesAndBoxes)
{
    const QStringList wanted{"DSN Ghost",
                             "Datasource",
                             "Files",
                             "File",
                             "Fields",
                             "Field",
                             "DBs",
                             "DB",
                             "Tables",
                             "Table",
                             "Columns",
                             "Column",
                             "Special Columns",
                             "Users",
                             "User",
                             "Padlock",
                             "DSN Refresh",
                             "DSN Admin",
                             "Import",
                             "Export",
                             "Up1",
                             "File Add",
                             "File Edit",
                             "File Delete",
                             "Field Add",
                             "Field Edit",
                             "Field Delete",
                             "DB Add",
                             "DB Edit",
                             "DB Delete",
                             "Table Add",
                             "Table Edit",
                             "Table Delete",
                             "Column Add",
                             "Column Edit",
                             "Column Delete",
                             "Special Column Edit",
                             "User Add",
                             "User Edit",
                             "User Delete",
                             "OK",
                             "Cancel",
                             "Undo",
                             "ViewData",
                             "Refresh",
                             "WWW",
                             "EMail",
                             "Information",
                             "Drag File",
                             "Drag Field",
                             "Drag Database",
                             "Drag Table",
                             "Drag Column",
                             "Drag User",
                             "No Drop",
                             "Error",
                             "Warning",
                             "Calculate",
                             "Next Number",
                             "Format",
                             "Lookup",
                             "More",
                             "Criteria",
                             "Box Information",
                             "Box Question",
                             "Box Warning",
                             "Box Critical",
                             "Blue Corner",
                             "Logo"};
    for (const QString& key : wanted)
        EXPECT_TRUE(Icons::contains(key)) << qPrintable(key);
    EXPECT_EQ(Icons::keys().size(), wanted.size());
}

TEST(Icons, AnUnknownKeyGivesNothing)
{
    for (const QString& key : {QString(), QString("None"), QString("file"), QString("File ")}) {
        EXPECT_FALSE(Icons::contains(key)) << qPrintable(key);
        EXPECT_TRUE(Icons::icon(key).isNull()) << qPrintable(key);
        EXPECT_TRUE(Icons::pixmap(key, {16, 16}, 1).isNull()) << qPrintable(key);
    }
    EXPECT_TRUE(Icons::pixmap("File", {}, 1).isNull());
}

TEST(Icons, EachKeyHasItsFileAndEachFileItsKey)
{
    QSet<QString> named;
    for (const QString& key : Icons::keys())
        named.insert(QString(key).replace(' ', '-').toLower() + ".svg");
    const QStringList icons = QDir(":/icons").entryList();
    const QStringList artwork = QDir(":/artwork").entryList();
    EXPECT_EQ(QSet<QString>(icons.begin(), icons.end()) + QSet<QString>(artwork.begin(), artwork.end()), named);
}

TEST(Icons, EveryDrawingKeepsToTheGridTheStrokeAndTheColours)
{
    const QSet<QString> colours{"none", "#46505d", "#2f6fc4", "#b9770e", "#c8402f"};
    for (const QString& name : QDir(":/icons").entryList()) {
        SCOPED_TRACE(name.toStdString());
        QFile file(":/icons/" + name);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        QXmlStreamReader reader(&file);
        int strokes = 0;
        while (!reader.atEnd()) {
            if (reader.readNext() != QXmlStreamReader::StartElement)
                continue;
            const QXmlStreamAttributes attributes = reader.attributes();
            if (reader.name() == QLatin1String("svg")) {
                EXPECT_EQ(attributes.value("viewBox").toString().toStdString(), "0 0 16 16");
            }
            for (const char* paint : {"fill", "stroke"}) {
                const QString colour = attributes.value(paint).toString();
                EXPECT_TRUE(colour.isEmpty() || colours.contains(colour)) << reader.lineNumber();
            }
            if (attributes.hasAttribute("stroke-width")) {
                ++strokes;
                EXPECT_EQ(attributes.value("stroke-width").toString().toStdString(), "1");
                EXPECT_EQ(attributes.value("stroke-linejoin").toString().toStdString(), "round");
            }
            EXPECT_FALSE(attributes.hasAttribute("transform"));
        }
        EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
        EXPECT_EQ(strokes, 1);
    }
}

TEST(Icons, NothingIsReadBeforeTheFirstPainting)
{
    dropQuorvaneResources();
    ASSERT_FALSE(QFile::exists(":/icons/file.svg"));
    const QIcon icon = Icons::icon("File");
    EXPECT_FALSE(icon.isNull());
    initQuorvaneResources();
    ASSERT_TRUE(QFile::exists(":/icons/file.svg"));
    const QImage image = icon.pixmap(QSize(19, 19)).toImage();
    EXPECT_NE(image, [&] {
        QImage empty(image.size(), image.format());
        empty.fill(Qt::transparent);
        return empty;
    }());
}

TEST(Icons, WhatIsRenderedIsShared)
{
    const QPixmap first = Icons::pixmap("Table", {16, 16}, 1);
    EXPECT_EQ(Icons::pixmap("Table", {16, 16}, 1).cacheKey(), first.cacheKey());
    EXPECT_NE(Icons::pixmap("Table", {16, 16}, 2).cacheKey(), first.cacheKey());
    EXPECT_NE(Icons::pixmap("Tables", {16, 16}, 1).cacheKey(), first.cacheKey());
}

TEST(Icons, APixmapHasTheSizeAndTheRatioThatItWasAskedFor)
{
    const QPixmap pixmap = Icons::pixmap("Blue Corner", {128, 64}, 1.5);
    EXPECT_EQ(pixmap.size(), QSize(192, 96));
    EXPECT_EQ(pixmap.devicePixelRatio(), 1.5);
    const QPixmap twice = Icons::icon("File").pixmap(QSize(16, 16), 2);
    EXPECT_EQ(twice.size(), QSize(32, 32));
    EXPECT_EQ(twice.devicePixelRatio(), 2);
}

TEST(Icons, PaintingOnAFineScreenUsesItsPixels)
{
    const QImage painted = shown("Padlock", Qt::white, 2);
    QImage expected(32, 32, QImage::Format_RGB32);
    expected.fill(Qt::white);
    QPainter painter(&expected);
    QPixmap fine = Icons::pixmap("Padlock", {32, 32}, 1);
    painter.drawPixmap(0, 0, fine);
    painter.end();
    expected.setDevicePixelRatio(2);
    EXPECT_EQ(painted, expected);
}

TEST(Icons, TheBlueCornerFadesAwayFromItsCorner)
{
    const QImage image = Icons::pixmap("Blue Corner", {256, 256}, 1).toImage();
    EXPECT_GT(qAlpha(image.pixel(250, 250)), 40);
    EXPECT_LT(qAlpha(image.pixel(128, 128)), qAlpha(image.pixel(250, 250)));
    EXPECT_EQ(qAlpha(image.pixel(0, 0)), 0);
    EXPECT_EQ(qAlpha(image.pixel(2, 255)), 0);
    EXPECT_EQ(qAlpha(image.pixel(255, 2)), 0);
}

TEST_F(IconsAndThePalette, AnIconFollowsAChangeOfThePalette)
{
    QApplication::setPalette(lightPalette());
    const QIcon icon = Icons::icon("File");
    const QImage light = icon.pixmap(QSize(16, 16)).toImage();
    QApplication::setPalette(darkPalette());
    const QImage dark = icon.pixmap(QSize(16, 16)).toImage();
    QApplication::setPalette(lightPalette());
    EXPECT_NE(light, dark);
    EXPECT_EQ(icon.pixmap(QSize(16, 16)).toImage(), light);
}

// Three to one is what the Web Content Accessibility Guidelines ask of graphics; where text itself hardly stands out
// from its ground, three tenths of its contrast.
TEST_P(IconsInPalette, EveryIconIsReadableOnItsGround)
{
    const double text = contrast(QApplication::palette().color(QPalette::Text).rgb(), base.rgb());
    for (const double ratio : {1.0, 2.0})
        for (const QString& key : iconKeys()) {
            const std::vector<double> seen = contrasts(shown(key, base, ratio), base);
            EXPECT_GE(shareAbove(seen, std::min(3.0, 0.3 * text)), 0.08) << qPrintable(key) << " at " << ratio;
        }
}

TEST_P(IconsInPalette, TheLogoIsReadableToo)
{
    EXPECT_GE(strongest(contrasts(shown("Logo", base, 1), base)), 2.0);
}

TEST_P(IconsInPalette, NoTwoIconsLookAlike)
{
    QHash<QByteArray, QString> seen;
    for (const QString& key : Icons::keys()) {
        const QImage image = shown(key, base, 1);
        const QByteArray pixels(reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes());
        EXPECT_FALSE(seen.contains(pixels)) << qPrintable(key) << " is " << qPrintable(seen.value(pixels));
        seen.insert(pixels, key);
    }
}

TEST_P(IconsInPalette, ADisabledIconIsDimmerAndStillThere)
{
    for (const QString& key : iconKeys() + QStringList{"Logo"}) {
        const double normal = strongest(contrasts(shown(key, base, 1), base));
        const double disabled = strongest(contrasts(shown(key, base, 1, QIcon::Disabled), base));
        EXPECT_LT(disabled - 1, (normal - 1) * 0.75) << qPrintable(key);
        EXPECT_GT(disabled, 1.2) << qPrintable(key);
    }
}

TEST_P(IconsInPalette, ASelectedIconStandsOutFromTheHighlightLikeItsText)
{
    const QPalette palette = QApplication::palette();
    const QColor highlight = palette.color(QPalette::Highlight);
    const double text = contrast(palette.color(QPalette::HighlightedText).rgb(), highlight.rgb());
    for (const QString& key : iconKeys()) {
        const std::vector<double> seen = contrasts(shown(key, highlight, 1, QIcon::Selected), highlight);
        EXPECT_GE(shareAbove(seen, 1 + (text - 1) * 0.4), 0.08) << qPrintable(key);
    }
}
