#pragma once

#include <QString>
#include <QStringView>

#include <deque>
#include <vector>

/// The columns of one line of a catalog's CSV file, numbered from 1; column 1 says which kind of line it is. Columns
/// that are cut from a line are views into it.
class CsvColumns
{
public:
    /// What stands behind that many columns is left out: no kind of line has as many.
    static constexpr int most = 32;

    void clear();
    int count() const { return static_cast<int>(m_columns.size()); }
    /// Raises 9 for a column that is not there.
    QStringView operator[](int number) const;

    /// Adds a column that stands in the line, or one of its own.
    void append(QStringView column) { m_columns.push_back(column); }
    void append(QString column);
    /// Gives a column another text. Columns that are missing up to it are empty.
    void set(int number, QString text);
    void setCount(int count) { m_columns.resize(static_cast<std::size_t>(count)); }
    /// Turns a column into upper case, if it is there.
    void raise(int number);

private:
    QStringView keep(QString text);

    std::vector<QStringView> m_columns;
    /// The texts that stand in no line. A deque leaves them where they are.
    std::deque<QString> m_own;
};

/// Cuts a line as the validation does: at every comma, within quotes or not. Of each column the blanks around it are
/// taken off, and then one double quote at either end.
void splitLine(QStringView line, CsvColumns& columns);

/// Cuts a line as the import does, which reads on from one column to the next: a column that begins with a double quote
/// ends at the next one and may hold commas, any other ends at the next comma. An empty column without quotes gets
/// lost, and those behind it move one place to the left. Each column goes through NoQuotes.
void scanLine(QStringView line, CsvColumns& columns);

/// The text without blanks and unprintable characters around it, without one double quote at either end, and again
/// without blanks.
QString NoQuotes(QStringView text);

/// The line as it may be shown: the password of a USER or DBPRV line gives way to stars, and so does everything that
/// may belong to it where the line has too few or too many columns.
QString maskedLine(QStringView line);
