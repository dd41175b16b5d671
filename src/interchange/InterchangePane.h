#pragma once

#include "PaneForm.h"

class PictureLabel;
class QPushButton;

namespace dao
{
class Database;
}

/// What the panes of Import Catalog and Export Catalog have in common: the datasource that they work on, with its
/// picture while it is connected, a few words on what happens, and the button that begins it.
class InterchangePane : public PaneForm
{
protected:
    /// What differs on the form. The name must be a literal.
    struct Words {
        const char* form;
        QString action;
        QString actionTip;
        /// What the user is told of the file.
        QStringList hints;
    };

    InterchangePane(const Words& words, QWidget* parent);

    /// Shows a datasource, connecting to it if need be.
    void show(const QString& datasource, const QString& title);
    const QString& datasource() const { return m_datasource; }
    /// The open catalog, connecting on demand; null where that failed, which has then been shown.
    dao::Database* catalog() const;
    QPushButton* cmdAction() const { return m_action; }

private:
    const char* m_form;
    QString m_datasource;
    PictureLabel* m_picture;
    QPushButton* m_action;
};
