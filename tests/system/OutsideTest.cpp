#include "Outside.h"

#include "Printing.h"
#include "RuntimeError.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QPrinter>
#include <QPrinterInfo>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

#include <gtest/gtest.h>

namespace
{

/// Takes what would reach the desktop.
class Desktop : public QObject
{
    Q_OBJECT

public:
    explicit Desktop(const QStringList& schemes) : m_schemes(schemes)
    {
        for (const QString& scheme : schemes)
            QDesktopServices::setUrlHandler(scheme, this, "take");
    }
    ~Desktop() override
    {
        for (const QString& scheme : m_schemes)
            QDesktopServices::unsetUrlHandler(scheme);
    }

    QList<QUrl> taken;

public slots:
    void take(const QUrl& url) { taken.append(url); }

private:
    QStringList m_schemes;
};

/// The real world outside.
class RealOutside : public testing::Test
{
protected:
    void SetUp() override
    {
        m_former = Outside::replace(nullptr);
        ASSERT_TRUE(folder.isValid());
    }
    void TearDown() override { Outside::replace(m_former); }

    QString path(const QString& name) const { return QDir(folder.path()).filePath(name); }

    static QByteArray contents(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir folder;

private:
    Outside* m_former = nullptr;
};

qsizetype pagesOf(const QByteArray& pdf)
{
    static const QRegularExpression page("/Type\\s*/Page\\b(?!s)");
    return QString::fromLatin1(pdf).count(page);
}

} // namespace

TEST_F(RealOutside, OpensAnExistingFileAsALocalUrl)
{
    Desktop desktop({"file"});
    const QString odd = path("a b#c?d%20e.txt");
    QFile file(odd);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_TRUE(Outside::instance().open(odd));
    ASSERT_EQ(desktop.taken.size(), 1);
    EXPECT_EQ(desktop.taken[0].toLocalFile(), odd);
}

TEST_F(RealOutside, DoesNotOpenAFileThatDoesNotExist)
{
    Desktop desktop({"file"});
    EXPECT_FALSE(Outside::instance().open(path("missing.txt")));
    EXPECT_FALSE(Outside::instance().open("missing.txt"));
    EXPECT_FALSE(Outside::instance().open("c:missing.txt"));
    EXPECT_FALSE(Outside::instance().open("file://" + path("missing.txt")));
    EXPECT_FALSE(Outside::instance().open(""));
    EXPECT_TRUE(desktop.taken.isEmpty());
}

TEST_F(RealOutside, AMailAddressReachesTheDesktopAsTyped)
{
    Desktop desktop({"mailto", "https"});
    const QString mail = "mailto:support@quorvane.example?subject=Quorvane Error Report?body=Paste Error text here";
    EXPECT_TRUE(Outside::instance().open(mail));
    EXPECT_TRUE(Outside::instance().open("https://www.quorvane.example/"));
    ASSERT_EQ(desktop.taken.size(), 2);
    EXPECT_EQ(desktop.taken[0].toString(), mail);
    EXPECT_EQ(desktop.taken[0].toEncoded(), QByteArray(mail.toUtf8()).replace(" ", "%20"));
    EXPECT_EQ(desktop.taken[1].toString(), "https://www.quorvane.example/");
}

TEST_F(RealOutside, SaysSoWhenNothingIsRegistered)
{
    if (QGuiApplication::platformName() != "offscreen")
        GTEST_SKIP() << "A desktop may have something registered";
    EXPECT_FALSE(Outside::instance().open("mailto:support@quorvane.example"));
}

TEST_F(RealOutside, RunsAProgramWithItsArguments)
{
    const QString mark = path("made by touch");
    EXPECT_TRUE(Outside::instance().run("touch", {mark}));
    EXPECT_TRUE(QTest::qWaitFor([&] { return QFile::exists(mark); }));
    EXPECT_FALSE(Outside::instance().run(path("no such program"), {}));
}

TEST_F(RealOutside, PutsTextOnTheClipboard)
{
    Outside::instance().setClipboard(QStringLiteral("First\n\tzweite Zeile: äöü"));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("First\n\tzweite Zeile: äöü"));
}

TEST_F(RealOutside, ItsClockIsTheSystems)
{
    const QDateTime before = QDateTime::currentDateTime();
    const QDateTime now = Outside::instance().now();
    EXPECT_LE(before, now);
    EXPECT_LE(now, QDateTime::currentDateTime());
}

TEST_F(RealOutside, EndingTheProcessTearsNothingDown)
{
    struct Loud {
        ~Loud() { std::_Exit(7); }
    };
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    EXPECT_EXIT(
        {
            static const Loud atExit;
            const Loud onStack;
            Outside::instance().endProcess();
        },
        testing::ExitedWithCode(1), "");
}

TEST_F(RealOutside, PrintingWithoutADefaultPrinterSaysSo)
{
    if (!QPrinterInfo::defaultPrinter().isNull())
        GTEST_SKIP() << "There is a default printer, which a test must not use";
    try {
        Outside::instance().print("Title", "Body");
        FAIL() << "Nothing was raised";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number(), ErrorNumber::PrinterError);
        EXPECT_EQ(error.description(), "Printer error: there is no default printer.");
    }
}

TEST_F(RealOutside, PrintsOnePageForAShortDocument)
{
    QPrinter printer;
    printer.setOutputFileName(path("short.pdf"));
    printing::print(printer, "Title\n", "Application:  \tOne\nVersion:      \tTwo\n");
    EXPECT_EQ(pagesOf(contents(path("short.pdf"))), 1);
}

TEST_F(RealOutside, PrintsALongDocumentOverPages)
{
    QPrinter printer;
    printer.setOutputFileName(path("long.pdf"));
    printing::print(printer, "Title", QString("A line of the report\n").repeated(300));
    const qsizetype pages = pagesOf(contents(path("long.pdf")));
    EXPECT_GE(pages, 4);
    EXPECT_LE(pages, 12);
}

TEST_F(RealOutside, WhatFollowsALabelStaysOnItsLine)
{
    const auto pages = [this](const QString& line) {
        QPrinter printer;
        printer.setOutputFileName(path("lines.pdf"));
        printing::print(printer, "Title", line.repeated(300));
        return pagesOf(contents(path("lines.pdf")));
    };
    EXPECT_EQ(pages("Description:  \tvalue\n"), pages("Description:   value\n"));
}

TEST_F(RealOutside, ADocumentThatCannotBePrintedRaisesAPrinterError)
{
    QPrinter printer;
    printer.setOutputFileName(path("no such folder/out.pdf"));
    try {
        printing::print(printer, "Title", "Body");
        FAIL() << "Nothing was raised";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.number(), ErrorNumber::PrinterError);
        EXPECT_TRUE(error.description().startsWith("Printer error: "));
    }
}

TEST_F(RealOutside, AReplacementStandsInUntilItIsTakenBack)
{
    class Deaf final : public Outside
    {
    public:
        bool open(const QString&) override { return false; }
        bool run(const QString&, const QStringList&) override { return false; }
        void print(const QString&, const QString&) override {}
        void setClipboard(const QString&) override {}
        QDateTime now() override { return {}; }
        [[noreturn]] void endProcess() override { throw 0; }
    } deaf;
    Outside& real = Outside::instance();
    EXPECT_EQ(Outside::replace(&deaf), nullptr);
    EXPECT_EQ(&Outside::instance(), &deaf);
    EXPECT_EQ(Outside::replace(nullptr), &deaf);
    EXPECT_EQ(&Outside::instance(), &real);
}

#include "OutsideTest.moc"
