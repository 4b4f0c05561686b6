import QtQuick

BodyText {
    color: Vzhled.secondaryText
    font.pixelSize: Vzhled.captionSize
}
