import Morvex
import QtQuick

Window {
    id: window

    required property CompanionModel companion

    title: "Morvex"
    width: 720
    height: 560
    minimumWidth: 420
    minimumHeight: 360
    color: Vzhled.page

    ContentView {
        anchors.fill: parent
        companion: window.companion
    }
}
