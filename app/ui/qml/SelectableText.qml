import QtQuick

/// A text whose parts can be selected and copied.
TextEdit {
    color: Vzhled.text
    selectionColor: Vzhled.button
    selectedTextColor: Vzhled.buttonText
    font.family: Qt.application.font.family
    font.pixelSize: Vzhled.bodySize
    wrapMode: TextEdit.Wrap
    textFormat: TextEdit.PlainText
    readOnly: true
    selectByMouse: true
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
