#include "modGUI.h"

#include "PaneForm.h"
#include "Routine.h"
#include "Settings.h"
#include "mdiMain.h"

#include <QLabel>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace modGUI
{

namespace
{

/// The corner picture's natural width and height in device-independent pixels; in a small pane it is smaller.
constexpr int cornerSize = 256;

/// Shows what is hidden by design. Popups and the inner parts of Qt's own controls are no controls of the form.
void showAllControls(PaneForm& form)
{
    for (QWidget* control : form.findChildren<QWidget*>()) {
        if (!control->isWindow() && !control->objectName().isEmpty() && !control->objectName().startsWith("qt_"_L1))
            control->setVisible(true);
    }
}

} // namespace

void PaneFormLoad(PaneForm& form)
{
    Routine routine("modGUI.PaneFormLoad");
    routine.run([&] {
        const bool web = settings::getNumber(u"Options"_s, u"Win98"_s, 1) != 0;
        form.setWebLook(web);

        mdiMain* window = mdiMain::find();
        if (!window)
            return;
        window->setAutoFillBackground(!web);
        window->setBackgroundRole(web ? QPalette::NoRole : QPalette::Button);
        if (window->debugFlag())
            showAllControls(form);
    });
}

void PaneFormResize(PaneForm& form)
{
    Routine routine("modGUI.PaneFormResize");
    routine.run([&] {
        QLabel& corner = *form.imgCorner();
        const QRect page = form.rect().adjusted(0, form.lblTitle()->height(), 0, 0);
        const int side = std::max(0, std::min({cornerSize, page.width() / 2, page.height() / 2}));
        corner.setGeometry(page.right() + 1 - side, page.bottom() + 1 - side, side, side);
    });
}

} // namespace modGUI
