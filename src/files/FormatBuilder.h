#pragma once

#include "DialogForm.h"

#include <QDateTime>

#include <vector>

class QGroupBox;
class QLineEdit;

/// A dialog that builds the format of a date or time field from buttons and shows what it gives at this moment. The
/// concrete dialog says which tokens its formats know.
class FormatBuilder : public DialogForm
{
public:
    /// What a format consists of. Everything in it that is no token stands for itself.
    struct Language {
        struct Token {
            QString text;
            /// What the token gives at a moment.
            QString (*example)(const QDateTime& moment);
        };
        struct Button {
            QString caption;
            QString token;
        };

        /// In the order in which they are looked for; case counts.
        std::vector<Token> tokens;
        /// The buttons of the tokens. Those of the separators come behind them.
        std::vector<Button> buttons;
    };

    /// What a format gives at a moment.
    static QString makeExample(const Language& language, const QString& format, const QDateTime& moment);
    /// A format without its last token or, if it ends in none, its last character. A lone character stays.
    static QString withoutLast(const Language& language, const QString& format);

protected:
    /// Both names of routines are literals.
    struct Names {
        QString form;
        QString title;
        QString group;
        const char* cmdComp;
        const char* cmdDelete;
    };

    FormatBuilder(const Language& language, const Names& names);

    /// Lets the user go on from a format. Returns what was built, or the format as it was given after anything but
    /// "OK".
    QString build(const QString& format);

private:
    QWidget* buildFormat();
    QWidget* buildComponents(const QString& group);
    void addComponents(QGroupBox& group, const std::vector<Language::Button>& buttons, int rows);
    void cmdComp_Click(const QString& token);
    void cmdDelete_Click();
    void show(const QString& format);

    const Language& m_language;
    const char* m_cmdCompRoutine;
    const char* m_cmdDeleteRoutine;
    QLineEdit* m_formatLabel;
    QLineEdit* m_exampleLabel;
    int m_components = 0;
    QString m_format;
    bool m_accepted = false;
};
