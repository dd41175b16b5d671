#include "WorkbenchStyle.h"

#include "Icons.h"

QIcon WorkbenchStyle::standardIcon(StandardPixmap picture, const QStyleOption* option, const QWidget* widget) const
{
    switch (picture) {
    case SP_ToolBarHorizontalExtensionButton:
        return Icons::icon(QStringLiteral("More"));
    case SP_MessageBoxInformation:
        return Icons::icon(QStringLiteral("Box Information"));
    case SP_MessageBoxQuestion:
        return Icons::icon(QStringLiteral("Box Question"));
    case SP_MessageBoxWarning:
        return Icons::icon(QStringLiteral("Box Warning"));
    case SP_MessageBoxCritical:
        return Icons::icon(QStringLiteral("Box Critical"));
    default:
        return QProxyStyle::standardIcon(picture, option, widget);
    }
}
