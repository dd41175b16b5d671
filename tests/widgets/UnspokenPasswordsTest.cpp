#include "UnspokenPasswords.h"

#include "ScreenReader.h"

#include <QAccessible>
#include <QLineEdit>
#include <QStandardItemModel>
#include <QTest>
#include <QTreeView>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace
{

/// Types, sets and takes away texts in every way that an entry knows. Gives what a screen reader hears of it.
QStringList workOn(QLineEdit::EchoMode mode)
{
    QLineEdit entry;
    entry.setEchoMode(mode);
    ScreenReader::takeHeard();
    QTest::keyClicks(&entry, u"ab"_s);
    QTest::keyClick(&entry, Qt::Key_Backspace);
    entry.setText(u"xyz"_s);
    entry.selectAll();
    entry.insert(u"pq"_s);
    entry.clear();
    entry.setText(u"longer"_s);
    entry.setText({});
    return ScreenReader::takeHeard();
}

QStringList textsOf(const QStringList& heard)
{
    QStringList texts;
    for (const QString& event : heard) {
        if (event.startsWith('+'_L1) || event.startsWith('-'_L1))
            texts.append(event);
    }
    return texts;
}

QString masked(const QString& heard)
{
    QString asterisks = heard;
    for (QChar& character : asterisks) {
        if (character.isLetter())
            character = u'*';
    }
    return asterisks;
}

} // namespace

TEST(UnspokenPasswords, OtherEntriesAreSpokenAsTheyAre)
{
    const ScreenReader reader;
    const QStringList spoken = workOn(QLineEdit::Normal);
    EXPECT_EQ(textsOf(spoken).first(3), (QStringList{u"+a"_s, u"+b"_s, u"-b"_s}));
    EXPECT_TRUE(spoken.contains(u"+pq"_s));
    EXPECT_TRUE(spoken.contains(u"+longer"_s));

    const UnspokenPasswords unspoken;
    EXPECT_EQ(workOn(QLineEdit::Normal), spoken);
}

TEST(UnspokenPasswords, WhatIsTypedIntoAHiddenEntryIsSpokenAsAsterisks)
{
    const ScreenReader reader;
    const QStringList inClear = workOn(QLineEdit::Password);
    ASSERT_EQ(textsOf(inClear).first(3), (QStringList{u"+a"_s, u"+b"_s, u"-b"_s}));

    const UnspokenPasswords unspoken;
    const QStringList spoken = workOn(QLineEdit::Password);
    EXPECT_EQ(textsOf(spoken).first(3), (QStringList{u"+*"_s, u"+*"_s, u"-*"_s}));
    for (const QLineEdit::EchoMode mode : {QLineEdit::Password, QLineEdit::PasswordEchoOnEdit, QLineEdit::NoEcho}) {
        SCOPED_TRACE(mode);
        const QString joined = textsOf(workOn(mode)).join(u' ');
        EXPECT_FALSE(joined.isEmpty());
        EXPECT_EQ(joined, masked(joined));
    }
    // Nothing else is held back, or put into another order.
    QStringList expected = inClear;
    for (QString& event : expected)
        event = masked(event);
    EXPECT_EQ(spoken, expected);
}

TEST(UnspokenPasswords, WithoutAnotherHandlerThePlatformIsToldAndTheHandlerStays)
{
    const ScreenReader reader;
    const QAccessible::UpdateHandler listener = QAccessible::installUpdateHandler(nullptr);
    {
        const UnspokenPasswords unspoken;
        workOn(QLineEdit::Password);
        workOn(QLineEdit::Normal);
        QStandardItemModel model(2, 2);
        QTreeView tree;
        tree.setModel(&model);
        tree.show();
        model.appendRow(new QStandardItem(u"x"_s));
        model.removeRow(0);

        const QAccessible::UpdateHandler stays = QAccessible::installUpdateHandler(nullptr);
        EXPECT_NE(stays, nullptr);
        QAccessible::installUpdateHandler(stays);
    }
    EXPECT_EQ(QAccessible::installUpdateHandler(listener), nullptr);
}
