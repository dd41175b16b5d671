#include "ErrorForm.h"

#include "Application.h"
#include "Boxes.h"
#include "FileDialogs.h"
#include "Icons.h"
#include "MousePointer.h"
#include "Outside.h"
#include "Routine.h"
#include "TextFile.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QEventLoop>
#include <QFontDatabase>
#include <QFontInfo>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QVBoxLayout>
#include <QWindow>

namespace
{

constexpr int Unit = 8;
constexpr int PictureSize = 40;

/// The window that the form belongs to: the main one, or the dialog in front of it that keeps it from being used.
QWidget* ownerOf(const QWidget& form)
{
    if (QWidget* modal = QApplication::activeModalWidget(); modal && modal != &form)
        return modal;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->objectName() == QLatin1String("mdiMain") && window->isVisible())
            return window;
    }
    return nullptr;
}

/// A menu or drop-down list in front of a modal window, or a widget that holds the mouse, would keep the user from it.
void releaseInput()
{
    while (QWidget* popup = QApplication::activePopupWidget()) {
        if (!popup->close())
            break;
    }
    if (QWidget* grabber = QWidget::mouseGrabber())
        grabber->releaseMouse();
}

QString withoutMnemonic(QString prompt)
{
    return prompt.remove(u'&').remove(u':');
}

} // namespace

ErrorForm* ErrorForm::s_loaded = nullptr;

ErrorForm::ErrorForm() : Form(Name)
{
    setWindowFlags(Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint);
    setWindowModality(Qt::ApplicationModal);
    setWindowTitle(QStringLiteral("Unexpected Error"));
    s_loaded = this;
}

ErrorForm::~ErrorForm()
{
    if (s_loaded == this)
        s_loaded = nullptr;
}

void ErrorForm::unloading()
{
    // From here on a touch loads the next form, though this one is deleted only later.
    if (s_loaded == this)
        s_loaded = nullptr;
    answer(frmTWErr::Abort);
}

frmTWErr::Response ErrorForm::ask(const QString& kind)
{
    const forms::Running running(*this);
    const mousepointer::Suspended pointer;
    struct HiddenAtEnd {
        ErrorForm& form;
        ~HiddenAtEnd() { form.hideIfShown(); }
    } hiddenAtEnd{*this};

    m_response = frmTWErr::Abort;
    hideIfShown();
    m_pressedReports.clear();
    fill(kind);
    present();

    // A report button runs here and not inside its click, so that no failure has to find its way through the event
    // loop.
    while (m_asking || !m_pressedReports.empty()) {
        if (!m_pressedReports.empty()) {
            const int pressed = m_pressedReports.front();
            m_pressedReports.erase(m_pressedReports.begin());
            cmdReport_Click(pressed);
            continue;
        }
        QEventLoop loop;
        struct Restore {
            ErrorForm& form;
            QEventLoop* former;
            ~Restore() { form.m_loop = former; }
        } restore{*this, std::exchange(m_loop, &loop)};
        loop.exec();
        if (m_asking && m_pressedReports.empty())
            answer(frmTWErr::Abort); // The application is quitting.
    }
    return m_response;
}

void ErrorForm::hideIfShown()
{
    m_asking = false;
    m_callStack.setWatched(false);
    hide();
}

void ErrorForm::closeEvent(QCloseEvent* event)
{
    event->ignore();
    answer(frmTWErr::Abort);
}

void ErrorForm::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        event->accept(); // Escape included: an accidental key must end nothing.
        return;
    }
    // Retry is what a stray Enter may do: it loses nothing, and a cause that persists brings the form back.
    auto* button = qobject_cast<QPushButton*>(focusWidget());
    (button ? button : cmdResponce[1])->click();
}

void ErrorForm::changeEvent(QEvent* event)
{
    Form::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && m_picture)
        showPicture();
}

void ErrorForm::build()
{
    if (m_heading)
        return;
    auto* separator = new QFrame;
    separator->setFrameShape(QFrame::HLine);
    separator->setFrameShadow(QFrame::Sunken);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2 * Unit, 2 * Unit, 2 * Unit, 2 * Unit);
    layout->setSpacing(2 * Unit);
    layout->addWidget(buildHeading());
    layout->addWidget(buildFields(), 1);
    layout->addWidget(separator);
    layout->addWidget(buildResponses());
    setCursor(Qt::ArrowCursor);
    resize(80 * Unit, 76 * Unit);
}

QWidget* ErrorForm::buildHeading()
{
    auto* heading = new QWidget;
    m_picture = new QLabel;
    m_picture->setFixedSize(PictureSize, PictureSize);
    m_heading = new QLabel;
    m_heading->setObjectName("lblHeading");
    m_heading->setTextFormat(Qt::PlainText);
    QFont font = m_heading->font();
    font.setPointSizeF(QFontInfo(font).pointSizeF() * 1.4);
    font.setBold(true);
    m_heading->setFont(font);

    auto* layout = new QHBoxLayout(heading);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2 * Unit);
    layout->addWidget(m_picture);
    layout->addWidget(m_heading, 1);
    return heading;
}

QWidget* ErrorForm::buildFields()
{
    auto* fields = new QWidget;
    auto* grid = new QGridLayout(fields);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(2 * Unit);
    grid->setVerticalSpacing(Unit);
    grid->setColumnStretch(1, 1);

    lblApp[0] = addValue(grid, "App&lication:", "lblApp_0");
    lblApp[1] = addValue(grid, "&Version:", "lblApp_1");
    lblSysInfo = addValue(grid, "System Info:", "lblSysInfo");
    lblErrNo = addValue(grid, "Err&or Number:", "lblErrNo");
    txtDescription = addText(grid, "Descriptio&n:", "txtDescription", 6);
    txtAdditionalInfo = addText(grid, "A&dditional Info:", "txtAdditionalInfo", 8);
    txtAdditionalInfo->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    txtAdditionalInfo->setTabStopDistance(4 * txtAdditionalInfo->fontMetrics().horizontalAdvance(u' '));
    txtAdditionalInfo->setLineWrapMode(QPlainTextEdit::WidgetWidth);
    lblTrappedIn = addValue(grid, "&Trapped In:", "lblTrappedIn");

    cboCallStack = new QComboBox;
    cboCallStack->setObjectName("cboCallStack");
    cboCallStack->setModel(&m_callStack);
    addRow(grid, "&Call Stack:", cboCallStack);
    // The newest routine is the one that shows, whatever comes and goes while the form is up.
    connect(&m_callStack, &QAbstractItemModel::rowsInserted, this, [this] { cboCallStack->setCurrentIndex(0); });
    connect(&m_callStack, &QAbstractItemModel::rowsRemoved, this,
            [this] { cboCallStack->setCurrentIndex(m_callStack.rowCount() > 0 ? 0 : -1); });

    addRow(grid, "Report:", buildReportButtons());
    return fields;
}

QWidget* ErrorForm::buildReportButtons()
{
    static constexpr std::array<const char*, 4> captions{"&Print", "&Save", "&Email", "&WWW"};
    const std::array<QString, 4> toolTips{"Print this error to the default printer", "Save this error to a text file",
                                          "EMail this error to " + application::supportMail(),
                                          "Visit " + application::supportWeb()};
    auto* buttons = new QWidget;
    auto* layout = new QHBoxLayout(buttons);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(Unit);
    for (std::size_t i = 0; i < captions.size(); ++i) {
        const int index = static_cast<int>(i);
        auto* button = new QPushButton(captions[i]);
        button->setObjectName(QStringLiteral("cmdReport_%1").arg(index));
        button->setAccessibleName(withoutMnemonic(captions[i]));
        button->setToolTip(toolTips[i]);
        connect(button, &QPushButton::clicked, this, [this, index] {
            m_pressedReports.push_back(index);
            wakeUp();
        });
        layout->addWidget(button);
        cmdReport[i] = button;
    }
    layout->addStretch(1);
    return buttons;
}

QWidget* ErrorForm::buildResponses()
{
    struct Choice {
        const char* caption;
        const char* toolTip;
        frmTWErr::Response response;
    };
    static constexpr std::array<Choice, 3> choices{{
        {"&Abort", "End the program at once; nothing is saved", frmTWErr::Abort},
        {"&Retry", "Run the failed statement again", frmTWErr::Retry},
        {"&Ignore", "Leave this operation unfinished and go on", frmTWErr::Ignore},
    }};
    auto* buttons = new QWidget;
    auto* layout = new QHBoxLayout(buttons);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(Unit);
    for (std::size_t i = 0; i < choices.size(); ++i) {
        auto* button = new QPushButton(choices[i].caption);
        button->setObjectName(QStringLiteral("cmdResponce_%1").arg(i));
        button->setAccessibleName(withoutMnemonic(choices[i].caption));
        button->setToolTip(choices[i].toolTip);
        button->setMinimumWidth(12 * Unit);
        connect(button, &QPushButton::clicked, this, [this, response = choices[i].response] { answer(response); });
        layout->addWidget(button);
        cmdResponce[i] = button;
        // The one answer that loses work stands apart.
        if (choices[i].response == frmTWErr::Abort)
            layout->addStretch(1);
    }
    cmdResponce[1]->setDefault(true);
    return buttons;
}

QLabel* ErrorForm::addValue(QGridLayout* grid, const QString& prompt, const QString& name)
{
    auto* value = new QLabel;
    value->setObjectName(name);
    value->setTextFormat(Qt::PlainText);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    value->setFocusPolicy(Qt::StrongFocus);
    value->setWordWrap(true);
    addRow(grid, prompt, value);
    return value;
}

QPlainTextEdit* ErrorForm::addText(QGridLayout* grid, const QString& prompt, const QString& name, int lines)
{
    auto* text = new QPlainTextEdit;
    text->setObjectName(name);
    text->setReadOnly(true);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    text->setTabChangesFocus(true);
    // On a small screen the boxes give way; what they hold can be scrolled.
    text->setMinimumHeight(3 * text->fontMetrics().lineSpacing());
    addRow(grid, prompt, text);
    grid->setRowStretch(grid->rowCount() - 1, lines);
    return text;
}

void ErrorForm::addRow(QGridLayout* grid, const QString& prompt, QWidget* control)
{
    auto* label = new QLabel(prompt);
    const bool tall = qobject_cast<QPlainTextEdit*>(control) != nullptr;
    // On the base line of the first row of text in the box.
    if (tall)
        label->setContentsMargins(0, Unit / 2, 0, 0);
    if (control->focusPolicy() != Qt::NoFocus)
        label->setBuddy(control);
    control->setAccessibleName(withoutMnemonic(prompt));
    const int row = grid->rowCount();
    grid->addWidget(label, row, 0, tall ? Qt::AlignTop : Qt::AlignVCenter);
    grid->addWidget(control, row, 1);
}

void ErrorForm::fill(const QString& kind)
{
    build();
    setWindowTitle(application::title() + " - " + kind);
    m_heading->setText(kind);
    lblApp[0]->setText(m_report.application);
    lblApp[1]->setText(m_report.version);
    lblSysInfo->setText(m_report.systemInfo);
    lblErrNo->setText(m_report.number);
    txtDescription->setPlainText(m_report.description);
    txtAdditionalInfo->setPlainText(m_report.additional);
    lblTrappedIn->setText(m_report.trappedIn);
    showPicture();
}

void ErrorForm::showPicture()
{
    const QString key = QStringLiteral("Box Critical");
    const QIcon icon = Icons::contains(key) ? Icons::icon(key) : style()->standardIcon(QStyle::SP_MessageBoxCritical);
    m_picture->setPixmap(icon.pixmap(QSize(PictureSize, PictureSize), devicePixelRatioF()));
}

void ErrorForm::present()
{
    releaseInput();
    m_callStack.setWatched(true);
    cboCallStack->setCurrentIndex(m_callStack.rowCount() > 0 ? 0 : -1);
    placeOverOwner();
    cmdResponce[1]->setFocus();
    m_asking = true;
    show();
    activateWindow();
}

void ErrorForm::placeOverOwner()
{
    const QWidget* window = ownerOf(*this);
    create();
    windowHandle()->setTransientParent(window ? window->windowHandle() : nullptr);
    const QRect available = (window ? window->screen() : screen())->availableGeometry();
    QRect place = window ? QRect(window->frameGeometry()) : available;
    place = QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, size().boundedTo(available.size()), place);
    place.moveLeft(qBound(available.left(), place.left(), available.right() - place.width() + 1));
    place.moveTop(qBound(available.top(), place.top(), available.bottom() - place.height() + 1));
    setGeometry(place);
}

void ErrorForm::answer(frmTWErr::Response response)
{
    if (!m_asking)
        return;
    m_response = response;
    hideIfShown();
    wakeUp();
}

void ErrorForm::wakeUp()
{
    if (m_loop)
        m_loop->quit();
}

void ErrorForm::cmdReport_Click(int index)
{
    // The report shows the stack as it stood at the failure, so it is made before this routine is on it.
    const QString report = reportText();
    Routine routine("frmTWErr.cmdReport_Click");
    routine.passing({ErrorNumber::DialogCancelled});
    routine.run([&] {
        try {
            switch (index) {
            case 0:
                printReport(report);
                break;
            case 1:
                saveReport(report);
                break;
            case 2:
                mailReport(report);
                break;
            default:
                open(application::supportWeb());
                break;
            }
        } catch (const RuntimeError& error) {
            if (error.number() != ErrorNumber::DialogCancelled)
                throw;
        }
    });
}

void ErrorForm::printReport(const QString& report)
{
    step([&] { Outside::instance().print(application::title() + " - Unexpected Error Report\n", report); });
}

void ErrorForm::saveReport(const QString& report)
{
    const QString path = filedialogs::choose({.mode = filedialogs::Mode::Save,
                                              .title = "Select file to save error to...",
                                              .suggestedName = application::title() + " Error Report.txt",
                                              .filter = "Text Files (*.txt)|*.txt|All Files (*.*)|*.*",
                                              .defaultExtension = "*.txt",
                                              .promptBeforeOverwriting = true});
    step([&] { writeTextFile(path, report); });
    if (boxes::ask("Error report written to\n" + path + "\n\nDo you wish to add any comments?"))
        open(path);
}

void ErrorForm::mailReport(const QString& report)
{
    Outside::instance().setClipboard(report);
    // The second question mark belongs to the address as mail programs have always been given it.
    open("mailto:" + application::supportMail() +
         "?subject=Quorvane Error Report?body=Paste Error text here and comments after");
}

void ErrorForm::open(const QString& target)
{
    if (!Outside::instance().open(target))
        boxes::show({.prompt = "No program is registered to open\n" + target,
                     .icon = boxes::Icon::Exclamation,
                     .buttons = boxes::Buttons::Ok,
                     .title = application::title()});
}

QString ErrorForm::reportText()
{
    m_report.callStack = frmTWErr::CallStack();
    return m_report.text(Outside::instance().now());
}
