#pragma once

#include "CallStackModel.h"
#include "ErrorReport.h"
#include "Form.h"
#include "frmTWErr.h"

#include <array>
#include <vector>

class QCloseEvent;
class QComboBox;
class QEventLoop;
class QGridLayout;
class QKeyEvent;
class QLabel;
class QPlainTextEdit;
class QPushButton;

/// The window behind frmTWErr. Hidden it is a call stack and costs no more than that: its controls are made when it is
/// first shown. The call stack is the very list of its combo box. While it asks, it is modal to the whole program; to
/// close it otherwise than by a button is an Abort, and since that loses the user's work the Escape key does nothing.
class ErrorForm final : public Form
{
    Q_OBJECT

public:
    static constexpr const char* Name = "frmTWErr";

    ErrorForm();
    ~ErrorForm() override;

    /// The form that is loaded, or null.
    static ErrorForm* loaded() { return s_loaded; }

    CallStackModel& callStack() { return m_callStack; }

    /// What the form shows. The call stack in it is taken when a report is made.
    ErrorReport& report() { return m_report; }

    /// Shows the report and waits for the answer. `kind` says what has happened: it heads the form and ends its title.
    /// When a report button fails meanwhile, that failure is asked in the same way, and its answer is this one's too.
    frmTWErr::Response ask(const QString& kind);

    void hideIfShown();

protected:
    void unloading() override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void build();
    QWidget* buildHeading();
    QWidget* buildFields();
    QWidget* buildReportButtons();
    QWidget* buildResponses();
    QLabel* addValue(QGridLayout* grid, const QString& prompt, const QString& name);
    QPlainTextEdit* addText(QGridLayout* grid, const QString& prompt, const QString& name, int lines);
    void addRow(QGridLayout* grid, const QString& prompt, QWidget* control);

    void fill(const QString& kind);
    void showPicture();
    void present();
    void placeOverOwner();
    void answer(frmTWErr::Response response);
    void wakeUp();

    void cmdReport_Click(int index);
    void printReport(const QString& report);
    void saveReport(const QString& report);
    void mailReport(const QString& report);
    void open(const QString& target);
    QString reportText();

    static ErrorForm* s_loaded;

    CallStackModel m_callStack;
    ErrorReport m_report;
    frmTWErr::Response m_response = frmTWErr::Abort;
    bool m_asking = false;
    QEventLoop* m_loop = nullptr;
    std::vector<int> m_pressedReports;

    QLabel* m_picture = nullptr;
    QLabel* m_heading = nullptr;
    std::array<QLabel*, 2> lblApp{};
    QLabel* lblSysInfo = nullptr;
    QLabel* lblErrNo = nullptr;
    QLabel* lblTrappedIn = nullptr;
    QPlainTextEdit* txtDescription = nullptr;
    QPlainTextEdit* txtAdditionalInfo = nullptr;
    QComboBox* cboCallStack = nullptr;
    std::array<QPushButton*, 3> cmdResponce{};
    std::array<QPushButton*, 4> cmdReport{};
};
