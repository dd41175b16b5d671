#pragma once

#include <QFrame>

class QLineEdit;
class QToolButton;

/// A text box with a button beside it that looks a value up. The properties are those of the text box or the button;
/// the owner hears of a changed text, of keys and of a press of the button, which F4 and Alt+Down press too.
class ctlTextLookup : public QWidget
{
    Q_OBJECT

public:
    explicit ctlTextLookup(const QString& name, QWidget* parent = nullptr);

    QString Text() const;
    void setText(const QString& text);
    bool TextEnabled() const;
    void setTextEnabled(bool enabled);
    bool ButtonEnabled() const;
    void setButtonEnabled(bool enabled);
    /// A locked text shows and can be copied, but takes no keys.
    bool Locked() const;
    void setLocked(bool locked);
    /// The button's own text.
    QString Caption() const;
    void setCaption(const QString& caption);
    /// 0 is flat, 1 has a frame.
    int Appearance() const;
    void setAppearance(int appearance);
    QColor BackColor() const;
    void setBackColor(const QColor& colour);
    QColor ForeColor() const;
    void setForeColor(const QColor& colour);
    /// The most characters that the text takes; 0 is no limit.
    int MaxLength() const;
    void setMaxLength(int length);
    QFont Font() const;
    void setFont(const QFont& font);
    /// The caret, or the start of what is marked.
    int SelStart() const;
    void setSelStart(int start);
    int SelLength() const;
    void setSelLength(int length);

    QLineEdit* txt() const { return m_txt; }
    QToolButton* cmd() const { return m_cmd; }

signals:
    void Change(const QString& text);
    /// A key for the text; a handler that accepts the event keeps it from the text.
    void KeyPress(QKeyEvent* event);
    void Click();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void arrange();

    QLineEdit* m_txt;
    QToolButton* m_cmd;
    QFrame* m_border;
};
