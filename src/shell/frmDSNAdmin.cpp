#include "frmDSNAdmin.h"

#include "DBEngine.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPointer>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace
{

class DatasourceWindow : public QDialog
{
public:
    explicit DatasourceWindow(QWidget* owner) : QDialog(owner)
    {
        setObjectName("frmDSNAdmin");
        setWindowTitle(tr("Datasource Administrator"));
        setAttribute(Qt::WA_DeleteOnClose);
        auto* list = new QTreeWidget(this);
        list->setObjectName("lvw");
        list->setHeaderLabels({tr("Name"), tr("Driver")});
        for (const dao::DataSource& source : dao::DBEngine::DataSources())
            new QTreeWidgetItem(list, {source.Name, source.Description});
        auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
        connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
        auto* layout = new QVBoxLayout(this);
        layout->addWidget(list);
        layout->addWidget(buttons);
    }
};

} // namespace

void showDatasourceWindow(QWidget* owner)
{
    static QPointer<DatasourceWindow> window;
    if (!window)
        window = new DatasourceWindow(owner);
    window->show();
    window->raise();
    window->activateWindow();
}
