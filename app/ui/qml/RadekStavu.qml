import QtQuick
import QtQuick.Layouts

/// A label and its value, with a picture if there is one.
RowLayout {
    id: row

    property string nazev
    property string hodnota
    property color barva: Vzhled.text
    property alias pictureSource: picture.source

    Layout.fillWidth: true
    spacing: Vzhled.gap
    Accessible.role: Accessible.StaticText
    Accessible.name: `${nazev}: ${hodnota}`

    BodyText {
        text: row.nazev
        color: Vzhled.secondaryText
        wrapMode: Text.NoWrap
        Layout.alignment: Qt.AlignTop
        Accessible.ignored: true
    }

    BodyText {
        Layout.fillWidth: true
        text: row.hodnota
        color: row.barva
        horizontalAlignment: Text.AlignRight
        wrapMode: Text.WrapAnywhere
        Accessible.ignored: true
    }

    Image {
        id: picture

        Layout.alignment: Qt.AlignTop
        visible: source.toString() !== ""
        sourceSize: Qt.size(20, 20)
    }
}
