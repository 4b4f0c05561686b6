import QtQuick

Text {
    color: Vzhled.text
    font.pixelSize: Vzhled.bodySize
    lineHeight: Vzhled.lineHeight
    wrapMode: Text.Wrap
    textFormat: Text.PlainText
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
