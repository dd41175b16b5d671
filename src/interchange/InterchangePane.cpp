#include "InterchangePane.h"

#include "CConnections.h"
#include "NodeTypes.h"
#include "PictureLabel.h"
#include "Routine.h"
#include "RoutineNames.h"
#include "modGUI.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace
{

/// The widest that picture and hints get before the lines wrap, in device-independent pixels.
constexpr int partWidth = 560;

} // namespace

InterchangePane::InterchangePane(const Words& words, QWidget* parent)
    : PaneForm(QLatin1StringView(words.form), parent), m_form(words.form),
      m_picture(new PictureLabel(nodetypes::connectedImage, {32, 32}, this)),
      m_action(new QPushButton(words.action, this))
{
    m_picture->setObjectName(u"imgDatasource"_s);
    m_picture->hide();
    m_action->setObjectName(u"cmdAction"_s);
    m_action->setToolTip(words.actionTip);
    m_action->setAccessibleDescription(words.actionTip);
    m_action->setMinimumWidth(96);

    auto* part = new QWidget(this);
    part->setMaximumWidth(partWidth);
    auto* columns = new QHBoxLayout(part);
    columns->setContentsMargins(0, 8, 0, 8);
    columns->setSpacing(16);
    columns->addWidget(m_picture, 0, Qt::AlignTop);
    auto* rows = new QVBoxLayout;
    rows->setSpacing(16);
    columns->addLayout(rows, 1);
    for (const QString& hint : words.hints) {
        auto* label = new QLabel(hint, part);
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
        rows->addWidget(label);
    }
    rows->addWidget(m_action, 0, Qt::AlignLeft);
    body()->addWidget(part);
    body()->addStretch(1);

    Routine routine(routineName(m_form, "Form_Load"));
    routine.run([&] { modGUI::PaneFormLoad(*this); });
}

void InterchangePane::show(const QString& datasource, const QString& title)
{
    m_datasource = datasource;
    const bool isConnected = catalog() != nullptr;
    lblTitle()->setText(title);
    m_picture->setVisible(isConnected);
}

dao::Database* InterchangePane::catalog() const
{
    CConnection* connection = CConnections::instance().Item(m_datasource);
    return connection ? connection->db() : nullptr;
}
