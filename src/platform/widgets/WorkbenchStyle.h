#pragma once

#include <QProxyStyle>

/// The desktop's own style, with this program's drawings where the style would bring bitmaps of a fixed colour: those
/// cannot be seen on a dark ground, and reading them costs the start of the program the loading of all image formats.
class WorkbenchStyle : public QProxyStyle
{
public:
    QIcon standardIcon(StandardPixmap picture, const QStyleOption* option = nullptr,
                       const QWidget* widget = nullptr) const override;
};
