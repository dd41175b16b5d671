#include "ItemFixture.h"

#include "CellGrid.h"
#include "DropDown.h"
#include "Form.h"
#include "PaneRegistry.h"
#include "ToolBar.h"
#include "UpDown.h"
#include "frmTWErr.h"

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include <array>
#include <stdexcept>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

/// The entry of a column within its prompt's row; a list where there is one.
constexpr std::array entryNames{"cboDropdown_", "chkProperty_", "txtProperty_"};

} // namespace

/// Sees each statement before the recorder does.
class ItemFixture::Interloper final : public dao::StatementObserver
{
public:
    Interloper(QString beginning, std::function<void()> action)
        : m_beginning(std::move(beginning)), m_action(std::move(action)), m_former(dao::DBEngine::setObserver(this))
    {
    }
    ~Interloper() override { dao::DBEngine::setObserver(m_former); }

    std::vector<dao::Error> beforeStatement(const QString& datasource, const QString& statement) override
    {
        if (m_action && statement.startsWith(m_beginning))
            std::exchange(m_action, nullptr)();
        return m_former->beforeStatement(datasource, statement);
    }

private:
    QString m_beginning;
    std::function<void()> m_action;
    dao::StatementObserver* m_former;
};

ItemFixture::ItemFixture() = default;

ItemFixture::~ItemFixture() = default;

void ItemFixture::TearDown()
{
    m_interloper.reset();
    MainWindowTest::TearDown();
}

void ItemFixture::record(const std::vector<std::pair<QString, int>>& recorded)
{
    for (const auto& [name, parts] : recorded) {
        panes::Operations operations;
        operations.Display = {parts, [this, name = name](Form&, const QStringList& keys) {
                                  m_shown.append(name + ' '_L1 + keys.join('/'_L1));
                              }};
        panes::add(
            name, [name = name] { return new Form(name); }, operations);
    }
}

void ItemFixture::begin(const QStringList& steps)
{
    if (!window) {
        start();
        window->resize(1100, 800);
    }
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    expandTo(key(steps.first(steps.size() - 1)));
    statements.clear();
    m_shown.clear();
}

void ItemFixture::open(const QStringList& steps)
{
    begin(steps);
    click(key(steps));
}

void ItemFixture::command(const QStringList& steps, const QString& menuItem)
{
    begin(steps);
    choose(key(steps), menuItem);
}

QWidget& ItemFixture::control(const QString& name) const
{
    QWidget* pane = window->currentPane();
    if (auto* found = pane ? pane->findChild<QWidget*>(name) : nullptr)
        return *found;
    throw std::runtime_error("There is no control " + name.toStdString());
}

QWidget& ItemFixture::entry(const QString& column) const
{
    for (const char* name : entryNames) {
        if (auto* found = window->currentPane()->findChild<QWidget*>(QLatin1String(name) + column))
            return *found;
    }
    throw std::runtime_error("There is no entry for " + column.toStdString());
}

DropDown& ItemFixture::list(const QString& column) const
{
    return dynamic_cast<DropDown&>(entry(column));
}

UpDown& ItemFixture::arrows(int index) const
{
    return dynamic_cast<UpDown&>(control(u"spnUpDn_"_s + QString::number(index)));
}

QString ItemFixture::limits(int index) const
{
    return dynamic_cast<QLabel&>(control(u"lblMinMax_"_s + QString::number(index))).text();
}

QString ItemFixture::text(const QString& column) const
{
    QWidget& found = control(u"txtProperty_"_s + column);
    if (const auto* edit = qobject_cast<QLineEdit*>(&found))
        return edit->text();
    return dynamic_cast<QPlainTextEdit&>(found).toPlainText();
}

QStringList ItemFixture::texts(const QStringList& columns) const
{
    QStringList all;
    for (const QString& column : columns)
        all.append(text(column));
    return all;
}

QStringList ItemFixture::open() const
{
    QStringList columns;
    for (QWidget* found : window->currentPane()->findChildren<QWidget*>()) {
        const QString name = found->objectName();
        const bool isEntry = name.startsWith("txtProperty_"_L1) || name.startsWith("cboDropdown_"_L1);
        if (isEntry && found->isVisible() && found->isEnabled())
            columns.append(name.section('_'_L1, 1));
    }
    return columns;
}

void ItemFixture::clear(const QString& column)
{
    QWidget& found = entry(column);
    ASSERT_TRUE(found.isVisible() && found.isEnabled()) << column.toStdString();
    QWidget& target = qobject_cast<QPlainTextEdit*>(&found) ? *static_cast<QPlainTextEdit&>(found).viewport() : found;
    QTest::mouseClick(&target, Qt::LeftButton);
    hit(Qt::Key_A, Qt::ControlModifier);
    hit(Qt::Key_Delete);
}

void ItemFixture::write(const QString& column, const QString& text)
{
    clear(column);
    QTest::keyClicks(&entry(column), text);
}

void ItemFixture::paste(const QString& column, const QString& text)
{
    clear(column);
    QApplication::clipboard()->setText(text);
    hit(Qt::Key_V, Qt::ControlModifier);
}

void ItemFixture::hit(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    ASSERT_TRUE(window->focusWidget());
    QTest::keyClick(window->focusWidget(), key, modifiers);
}

void ItemFixture::pick(const QString& column, const QString& item)
{
    DropDown& found = list(column);
    ASSERT_TRUE(found.isVisible() && found.isEnabled()) << column.toStdString();
    found.setFocus();
    const int wanted = found.findText(item);
    ASSERT_GE(wanted, 0) << item.toStdString();
    while (found.currentIndex() != wanted)
        QTest::keyClick(&found, found.currentIndex() < wanted ? Qt::Key_Down : Qt::Key_Up);
}

void ItemFixture::press(const QString& key)
{
    const QString name = "tbr"_L1 + window->currentPane()->name().mid(3);
    QToolButton* button = window->toolBar(name).Button(key).widget();
    ASSERT_TRUE(button->isVisible()) << key.toStdString();
    QTest::mouseClick(button, Qt::LeftButton);
}

void ItemFixture::clickButton(const QString& name)
{
    QWidget& button = control(name);
    ASSERT_TRUE(button.isVisible() && button.isEnabled()) << name.toStdString();
    QTest::mouseClick(&button, Qt::LeftButton);
}

QString ItemFixture::state() const
{
    const ToolBar& bar = window->toolBar("tbr"_L1 + window->currentPane()->name().mid(3));
    QStringList enabled;
    for (const ToolButton* button : bar.Buttons()) {
        if (button->Enabled())
            enabled.append(button->Key());
    }
    return bar.Button(u"OK"_s).Tag() + ": "_L1 + enabled.join(' '_L1);
}

QString ItemFixture::focus() const
{
    const QWidget* focused = window->focusWidget();
    if (!focused)
        return {};
    const QString name = focused->objectName();
    return name.contains('_'_L1) ? name.section('_'_L1, 1) : name;
}

QStringList ItemFixture::takeShown()
{
    return std::exchange(m_shown, {});
}

QStringList ItemFixture::gridNames() const
{
    QStringList names;
    const auto& grid = dynamic_cast<CellGrid&>(control(u"grd"_s));
    for (int row = 0; row + 1 < grid.Rows(); ++row)
        names.append(grid.TextMatrix(row, 0));
    return names;
}

void ItemFixture::meanwhile(const QString& beginning, std::function<void()> action)
{
    m_interloper.reset();
    m_interloper = std::make_unique<Interloper>(beginning, std::move(action));
}

QStringList ItemFixture::pressOkTwice()
{
    QStringList routines;
    bool came = false;
    QToolButton* ok = window->toolBar("tbr"_L1 + window->currentPane()->name().mid(3)).Button(u"OK"_s).widget();
    QTimer::singleShot(0, window.get(), [&] {
        came = true;
        routines = frmTWErr::CallStack();
        QTest::mouseClick(ok, Qt::LeftButton);
    });
    press(u"OK"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return came; }));
    return routines;
}
