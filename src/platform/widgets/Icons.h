#pragma once

#include <QIcon>
#include <QPixmap>
#include <QString>
#include <QStringList>

/// The program's pictures by image key ("Datasource", "File Add", "No Drop"), drawn as one family in one place and
/// shared by everyone who asks. Making an icon costs next to nothing: its drawing is read and rendered when it is first
/// painted, at the size and pixel ratio of that moment and in the colours of the application's palette; what was
/// rendered is kept until the palette changes. In Disabled mode a picture is faint and grey, in Selected mode it takes
/// the palette's highlighted text colour. Use on the GUI thread only, after the application object exists.
class Icons
{
public:
    /// The picture of the key; a null icon for a key that has none ("None", an empty key).
    static QIcon icon(const QString& key);

    /// The picture of the key at `size` in device-independent pixels, centred where the drawing is of another shape. It
    /// is a snapshot: ask again after a palette change. Null for an unknown key or an empty size.
    static QPixmap pixmap(const QString& key, QSize size, qreal devicePixelRatio);

    static bool contains(const QString& key);

    /// All image keys, in alphabetical order.
    static QStringList keys();
};
