#include "frmDSNEdit.h"

#include "Application.h"
#include "Boxes.h"
#include "FileDialogs.h"
#include "Routine.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;
using dao::Installer::Key;
using dao::Installer::Scope;

namespace
{

bool isSameKey(const QString& one, const QString& other)
{
    return one.compare(other, Qt::CaseInsensitive) == 0;
}

QLabel* addPrompt(QGridLayout& grid, const QString& prompt, QWidget* buddy)
{
    auto* label = new QLabel(prompt, grid.parentWidget());
    label->setBuddy(buddy);
    buddy->setAccessibleName(QString(prompt).remove(u'&'));
    grid.addWidget(label, grid.rowCount(), 0);
    return label;
}

} // namespace

frmDSNEdit::frmDSNEdit(QWidget* owner, std::optional<dao::Installer::Datasource> source, Save save)
    : QDialog(owner), m_source(std::move(source)), m_save(std::move(save))
{
    setObjectName(u"frmDSNEdit"_s);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(m_source ? tr("Change Datasource") : tr("Add Datasource"));

    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(16, 16, 16, 16);
    rows->setSpacing(16);
    auto* grid = new QGridLayout;
    rows->addLayout(grid, 1);
    grid->setHorizontalSpacing(16);
    grid->setVerticalSpacing(8);
    grid->setColumnStretch(1, 1);

    m_name = new QLineEdit(this);
    m_name->setObjectName(u"txtName"_s);
    addPrompt(*grid, tr("&Name:"), m_name);
    grid->addWidget(m_name, grid->rowCount() - 1, 1, 1, 2);

    m_user = new QRadioButton(tr("&This user"), this);
    m_user->setObjectName(u"optScope_0"_s);
    m_system = new QRadioButton(tr("&All users"), this);
    m_system->setObjectName(u"optScope_1"_s);
    auto* scopes = new QHBoxLayout;
    scopes->setSpacing(16);
    scopes->addWidget(m_user);
    scopes->addWidget(m_system);
    scopes->addStretch(1);
    grid->addWidget(new QLabel(tr("Available to:"), this), grid->rowCount(), 0);
    grid->addLayout(scopes, grid->rowCount() - 1, 1, 1, 2);

    addField(*grid, tr("D&escription:"), u"Description"_s);
    addField(*grid, tr("&Catalog file:"), u"Catalog"_s, tr("Select the catalog file"));
    addField(*grid, tr("&Statement log:"), u"StatementLog"_s, tr("Select the file that receives the statements"));
    addField(*grid, tr("&Default database:"), u"DefaultDatabase"_s);

    m_others = new QPlainTextEdit(this);
    m_others->setObjectName(u"txtOthers"_s);
    m_others->setTabChangesFocus(true);
    m_others->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_others->setPlaceholderText(tr("Key=Value, one on each line"));
    addPrompt(*grid, tr("&Other keys:"), m_others)->setAlignment(Qt::AlignTop);
    grid->addWidget(m_others, grid->rowCount() - 1, 1, 1, 2);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setObjectName(u"cmdOK"_s);
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(u"cmdCancel"_s);
    connect(buttons, &QDialogButtonBox::accepted, this, &frmDSNEdit::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &frmDSNEdit::reject);
    rows->addWidget(buttons);

    populate();
    resize(std::max(sizeHint().width(), 560), std::max(sizeHint().height(), 400));
}

void frmDSNEdit::addField(QGridLayout& grid, const QString& prompt, const QString& key, const QString& fileTitle)
{
    auto* entry = new QLineEdit(this);
    entry->setObjectName("txt"_L1 + key);
    addPrompt(grid, prompt, entry);
    const int row = grid.rowCount() - 1;
    m_fields.push_back({key, entry});
    if (fileTitle.isEmpty()) {
        grid.addWidget(entry, row, 1, 1, 2);
        return;
    }
    auto* button = new QPushButton(tr("Browse..."), this);
    button->setObjectName("cmdBrowse_"_L1 + key);
    button->setAutoDefault(false);
    button->setAccessibleName(fileTitle);
    connect(button, &QPushButton::clicked, this, [this, entry, fileTitle] { browse(*entry, fileTitle); });
    grid.addWidget(entry, row, 1);
    grid.addWidget(button, row, 2);
}

void frmDSNEdit::browse(QLineEdit& entry, const QString& title)
{
    Routine routine("frmDSNEdit.cmdBrowse_Click");
    routine.passing({ErrorNumber::DialogCancelled});
    routine.run([&] {
        try {
            filedialogs::Request request;
            request.mode = filedialogs::Mode::Save;
            request.title = title;
            request.suggestedName = entry.text();
            request.filter = tr("All Files (*.*)|*.*");
            entry.setText(filedialogs::choose(request));
        } catch (const RuntimeError& error) {
            if (error.number() != ErrorNumber::DialogCancelled)
                throw;
        }
    });
}

void frmDSNEdit::populate()
{
    m_user->setChecked(!m_source || m_source->Where == Scope::User);
    m_system->setChecked(!m_user->isChecked());
    if (!m_source)
        return;
    m_user->setEnabled(false);
    m_system->setEnabled(false);
    m_name->setText(m_source->Name);
    QStringList others;
    for (const Key& key : m_source->Keys) {
        const auto field = std::find_if(m_fields.begin(), m_fields.end(),
                                        [&](const Field& known) { return isSameKey(known.key, key.Name); });
        if (field != m_fields.end())
            field->entry->setText(key.Value);
        else
            others.append(key.Name + u'=' + key.Value);
    }
    m_others->setPlainText(others.join(u'\n'));
}

bool frmDSNEdit::complain(const QString& reason, QWidget& control)
{
    boxes::show({reason, boxes::Icon::Exclamation, boxes::Buttons::Ok, application::title()});
    control.setFocus();
    return false;
}

bool frmDSNEdit::validate()
{
    if (m_name->text().trimmed().isEmpty())
        return complain(tr("Please enter a name for the datasource."), *m_name);
    const QStringList lines = m_others->toPlainText().split(u'\n');
    for (qsizetype index = 0; index < lines.size(); ++index) {
        const QString line = lines.at(index).trimmed();
        if (!line.isEmpty() && line.indexOf(u'=') < 1)
            return complain(
                tr("Line %1 of the other keys, \"%2\", is not of the form Key=Value.").arg(index + 1).arg(line),
                *m_others);
    }
    for (const Key& other : otherKeys()) {
        for (const Field& field : m_fields) {
            if (isSameKey(field.key, other.Name))
                return complain(tr("The key \"%1\" has an entry of its own above.").arg(other.Name), *field.entry);
        }
    }
    return true;
}

std::vector<Key> frmDSNEdit::otherKeys() const
{
    std::vector<Key> keys;
    for (const QString& line : m_others->toPlainText().split(u'\n', Qt::SkipEmptyParts)) {
        const qsizetype equals = line.indexOf(u'=');
        if (equals > 0)
            keys.push_back({line.left(equals).trimmed(), line.mid(equals + 1).trimmed()});
    }
    return keys;
}

/// The keys in the order in which they stand in the file, new ones behind them.
std::vector<Key> frmDSNEdit::keys() const
{
    std::vector<Key> all;
    for (const Field& field : m_fields)
        all.push_back({field.key, field.entry->text().trimmed()});
    for (Key& other : otherKeys())
        all.push_back(std::move(other));
    if (!m_source)
        return all;

    const std::vector<Key>& former = m_source->Keys;
    const auto place = [&](const Key& key) {
        return std::find_if(former.begin(), former.end(),
                            [&](const Key& old) { return isSameKey(old.Name, key.Name); });
    };
    std::stable_sort(all.begin(), all.end(), [&](const Key& one, const Key& two) { return place(one) < place(two); });
    for (Key& key : all) {
        if (const auto old = place(key); old != former.end())
            key.Name = old->Name;
    }
    return all;
}

void frmDSNEdit::accept()
{
    Routine routine("frmDSNEdit.cmdOK_Click");
    routine.run([&] {
        if (!validate())
            return;
        try {
            m_save({m_system->isChecked() ? Scope::System : Scope::User, m_name->text().trimmed(), keys()});
        } catch (const RuntimeError& error) {
            complain(error.description(), *m_name);
            return;
        }
        QDialog::accept();
    });
}
