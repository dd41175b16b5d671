#include "RowStore.h"

#include <QString>

#include "QtPrinting.h"

#include <gtest/gtest.h>

#include <random>

using dao::RowStore;

TEST(RowStore, KeepsCellsOfEveryLengthAndNullsInPlace)
{
    std::mt19937 random(20);
    std::vector<std::vector<QString>> rows;
    RowStore store(5);
    for (int number = 0; number < 3000; ++number) {
        std::vector<QString> row;
        store.beginRow();
        for (int column = 0; column < 5; ++column) {
            const auto kind = random() % 10;
            const auto length = kind == 0 ? 0 : kind == 1 ? random() % 20000 : random() % 40;
            QString text(static_cast<qsizetype>(length), QChar(static_cast<char16_t>(random() % 0xFFFF)));
            if (kind == 2) {
                row.push_back(QString());
                store.appendNull();
            } else {
                store.append(reinterpret_cast<const char16_t*>(text.utf16()), static_cast<std::size_t>(text.size()));
                row.push_back(text.isNull() ? QStringLiteral("") : text);
            }
        }
        store.endRow();
        rows.push_back(row);
    }
    ASSERT_EQ(store.rows(), rows.size());
    for (std::size_t row = 0; row < rows.size(); ++row) {
        for (std::size_t column = 0; column < 5; ++column) {
            bool isNull = false;
            const QStringView text = store.cell(row, column, isNull);
            ASSERT_EQ(isNull, rows[row][column].isNull());
            ASSERT_TRUE(text == rows[row][column]) << row << ' ' << column;
        }
    }
}

TEST(RowStore, ARowBegunAgainIsDropped)
{
    RowStore store(1);
    store.beginRow();
    store.append(u"gone", 4);
    store.beginRow();
    store.append(u"kept", 4);
    store.endRow();
    bool isNull = true;
    ASSERT_EQ(store.rows(), 1U);
    EXPECT_EQ(store.cell(0, 0, isNull).toString(), "kept");
    EXPECT_FALSE(isNull);
}

TEST(RowStore, CellsStayWhereTheyAreWhileRowsAreAdded)
{
    RowStore store(1);
    store.beginRow();
    store.append(u"first", 5);
    store.endRow();
    bool isNull = false;
    const QStringView first = store.cell(0, 0, isNull);
    const std::u16string filler(1000, u'x');
    for (int row = 0; row < 2000; ++row) {
        store.beginRow();
        store.append(filler.data(), filler.size());
        store.endRow();
    }
    EXPECT_EQ(first.data(), store.cell(0, 0, isNull).data());
    EXPECT_EQ(first.toString(), "first");
}
