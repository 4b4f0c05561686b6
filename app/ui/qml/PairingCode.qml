import Morvex
import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T

/// The QR code for the phone. A press copies its text for a phone program in a terminal.
ColumnLayout {
    id: view

    required property PairingModel model
    readonly property int side: 220
    /// At least four modules, even for a short text whose modules are large.
    readonly property int quietZone: 16

    spacing: Vzhled.gap

    BodyText {
        Layout.fillWidth: true
        text: qsTr("Načti tento kód v aplikaci Morvex na telefonu.")
    }

    T.AbstractButton {
        id: picture

        Layout.alignment: Qt.AlignHCenter
        implicitWidth: view.side + 2 * view.quietZone
        implicitHeight: implicitWidth
        visible: code.drawable
        focusPolicy: Qt.StrongFocus
        Accessible.role: Accessible.Button
        Accessible.name: qsTr("QR kód")
        Accessible.description: hint.text
        Accessible.onPressAction: picture.clicked()
        Keys.onReturnPressed: picture.clicked()
        Keys.onEnterPressed: picture.clicked()
        onClicked: {
            view.model.copyCode();
            copied.restart();
        }

        background: Rectangle {
            radius: Vzhled.controlRadius
            color: "#ffffff"
            border.color: Vzhled.line
        }

        QrItem {
            id: code

            anchors.centerIn: parent
            width: view.side
            height: view.side
            text: view.model.code
            opacity: view.model.expired ? 0.12 : 1
        }

        FocusRing {
            control: picture
        }
    }

    CaptionText {
        id: hint

        Layout.alignment: Qt.AlignHCenter
        visible: picture.visible && !view.model.expired
        text: copied.running ? qsTr("Text kódu je zkopírovaný.") : qsTr("Kliknutím zkopíruješ text kódu.")
        // The code itself has this text as its description.
        Accessible.ignored: true

        Timer {
            id: copied

            interval: 2000
        }
    }

    Note {
        visible: !code.drawable
        trouble: true
        text: qsTr("QR kód se nepodařilo vykreslit.")
    }

    CaptionText {
        Layout.fillWidth: true
        text: qsTr("Kód platí do %1. Po vypršení si nech zobrazit nový — krátká platnost je záměr.").arg(view.model.validUntil)
    }

    LocalRelayNote {
        model: view.model
    }

    ButtonRow {
        Layout.fillWidth: true

        ActionButton {
            visible: view.model.expired
            kind: ActionButton.Kind.Main
            text: qsTr("Zobrazit QR kód")
            onClicked: view.model.start()
        }

        ActionButton {
            text: qsTr("Zrušit")
            onClicked: view.model.cancel()
        }
    }
}
