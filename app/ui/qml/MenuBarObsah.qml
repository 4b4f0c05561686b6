import Morvex
import QtQuick
import QtQuick.Layouts

/// The content of the tray item's window.
Rectangle {
    id: view

    required property CompanionModel model
    /// The window is no longer needed.
    signal done

    implicitHeight: column.implicitHeight + 2 * Vzhled.gap
    color: Vzhled.card
    border.color: Vzhled.line

    FocusKeeper {
        area: column
    }

    ColumnLayout {
        id: column

        anchors.fill: parent
        anchors.margins: Vzhled.gap
        spacing: Vzhled.smallGap

        Item {
            Layout.fillWidth: true
            Layout.margins: Vzhled.hairGap
            implicitHeight: names.implicitHeight

            Image {
                id: picture

                anchors.verticalCenter: parent.verticalCenter
                width: 36
                height: 36
                sourceSize: Qt.size(width, height)
                source: `image://glyph/waveform/${Vzhled.hex(Vzhled.button)}`
            }

            ColumnLayout {
                id: names

                anchors.left: picture.right
                anchors.leftMargin: Vzhled.gap
                anchors.right: parent.right
                spacing: 0

                BodyText {
                    text: "Morvex"
                    font.pixelSize: Vzhled.headingSize
                    font.weight: Font.DemiBold
                }

                CaptionText {
                    Layout.fillWidth: true
                    text: view.model.link.availability
                }
            }
        }

        Note {
            Layout.margins: Vzhled.hairGap
            visible: text !== ""
            trouble: true
            text: view.model.about.trouble
        }

        Divider {
            visible: view.model.approval.waiting
        }

        BodyText {
            Layout.fillWidth: true
            Layout.margins: Vzhled.hairGap
            visible: view.model.approval.waiting
            text: qsTr("Čeká na potvrzení: %1").arg(view.model.approval.title)
        }

        ApprovalButtons {
            Layout.fillWidth: true
            Layout.margins: Vzhled.hairGap
            visible: view.model.approval.waiting
            approveFirst: true
            model: view.model.approval
        }

        Divider {}

        SideRow {
            Layout.margins: Vzhled.hairGap
            visible: view.model.tasks.runningTool !== ""
            controls: ActionButton {
                text: qsTr("Zastavit")
                subject: view.model.tasks.runningId
                onClicked: view.model.tasks.stop(meant)
            }

            BodyText {
                Layout.fillWidth: true
                text: qsTr("Běží: %1").arg(view.model.tasks.runningTool)
            }
        }

        CaptionText {
            Layout.fillWidth: true
            Layout.margins: Vzhled.hairGap
            text: qsTr("Hlasový rozhovor tahle verze ještě neumí.")
        }

        Divider {}

        MenuRow {
            glyph: "window"
            text: qsTr("Otevřít nastavení")
            onClicked: {
                view.model.openMainWindow();
                view.done();
            }
        }

        MenuRow {
            glyph: "quit"
            text: qsTr("Ukončit Morvex")
            onClicked: view.model.quit()
        }
    }
}
