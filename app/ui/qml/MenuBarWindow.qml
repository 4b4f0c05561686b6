import Morvex
import QtQuick

/// The small window of the tray item. It closes when it loses the focus.
Window {
    id: window

    required property CompanionModel companion
    property bool wasActive: false

    title: "Morvex"
    flags: Qt.Tool | Qt.FramelessWindowHint
    width: 320
    height: content.implicitHeight
    color: Vzhled.card
    onActiveChanged: {
        if (!window.active && window.wasActive)
            window.close();
        window.wasActive = window.active;
    }

    Shortcut {
        sequences: [StandardKey.Cancel]
        onActivated: window.close()
    }

    MenuBarObsah {
        id: content

        anchors.fill: parent
        model: window.companion
        onDone: window.close()
    }
}
