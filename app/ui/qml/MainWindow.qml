import Morvex
import QtQuick

Window {
    id: window

    required property CompanionModel companion

    title: "Morvex"
    // A small screen, or one with strong magnification, has less room.
    width: Math.min(720, Screen.desktopAvailableWidth)
    height: Math.min(560, Screen.desktopAvailableHeight)
    minimumWidth: Math.min(30 * Vzhled.bodySize, Screen.desktopAvailableWidth)
    minimumHeight: Math.min(360, Screen.desktopAvailableHeight)
    color: Vzhled.page

    ContentView {
        anchors.fill: parent
        companion: window.companion
    }
}
