#include "WorkbenchStyle.h"

#include "Icons.h"

QIcon WorkbenchStyle::standardIcon(StandardPixmap picture, const QStyleOption* option, const QWidget* widget) const
{
    if (picture == SP_ToolBarHorizontalExtensionButton)
        return Icons::icon(QStringLiteral("More"));
    return QProxyStyle::standardIcon(picture, option, widget);
}
