import QtQuick

/// A drawing of the project in one colour. Only decoration: texts next to it say the same.
Image {
    required property string name
    property color color: Vzhled.text
    property int side: 20

    width: side
    height: side
    sourceSize: Qt.size(side, side)
    source: `image://glyph/glyphs/${name}/${Vzhled.hex(color)}`
}
