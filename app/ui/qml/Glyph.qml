import QtQuick

/// A drawing of the project in one colour. Decoration: whoever needs words finds them beside it.
Image {
    required property string name
    property color color: Vzhled.text
    property int side: 20

    width: side
    height: side
    sourceSize: Qt.size(side, side)
    source: `image://glyph/glyphs/${name}/${Vzhled.hex(color)}`
}
