import QtQuick
import QtQuick.Templates as T

T.ScrollBar {
    id: bar

    implicitWidth: 12
    padding: 3
    minimumSize: 0.08
    visible: size < 1
    Accessible.ignored: true

    contentItem: Rectangle {
        radius: 3
        color: Vzhled.secondaryText
        opacity: bar.pressed ? 0.8 : bar.hovered || bar.active ? 0.55 : 0.3
    }
}
