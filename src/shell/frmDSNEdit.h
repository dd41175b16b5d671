#pragma once

#include "Installer.h"

#include <QDialog>

#include <functional>
#include <optional>

class QGridLayout;
class QLineEdit;
class QPlainTextEdit;
class QRadioButton;

/// The dialog of one datasource of the family, new or there already. "OK" hands the entry over; when that fails the
/// reason shows in a box and the dialog stays as it is. Keys that it has no entry for keep their place among the other
/// keys.
class frmDSNEdit : public QDialog
{
public:
    struct Entry {
        dao::Installer::Scope Where = dao::Installer::Scope::User;
        QString Name;
        std::vector<dao::Installer::Key> Keys;
    };
    /// Stores the entry, or raises a run-time error.
    using Save = std::function<void(const Entry& entry)>;

    frmDSNEdit(QWidget* owner, std::optional<dao::Installer::Datasource> source, Save save);

    void accept() override;

private:
    /// An entry field of a key that the family's driver knows.
    struct Field {
        QString key;
        QLineEdit* entry;
    };

    void addField(QGridLayout& grid, const QString& prompt, const QString& key, const QString& fileTitle = {});
    void browse(QLineEdit& entry, const QString& title);
    void populate();
    bool validate();
    bool complain(const QString& reason, QWidget& control);
    std::vector<dao::Installer::Key> otherKeys() const;
    std::vector<dao::Installer::Key> keys() const;

    std::optional<dao::Installer::Datasource> m_source;
    Save m_save;
    QLineEdit* m_name;
    QRadioButton* m_user;
    QRadioButton* m_system;
    std::vector<Field> m_fields;
    QPlainTextEdit* m_others;
};
