import Morvex
import QtQuick
import QtQuick.Layouts

/// The action that waits for a decision, with everything it would do.
Karta {
    id: view

    required property ApprovalModel model

    visible: model.waiting
    urgent: true
    title: qsTr("Čeká na potvrzení: %1").arg(model.title)
    glyph: "shield"

    Rectangle {
        Layout.fillWidth: true
        visible: view.model.detail !== ""
        implicitHeight: detail.implicitHeight + 2 * Vzhled.gap
        radius: Vzhled.controlRadius
        color: Vzhled.field
        border.color: Vzhled.line

        BodyText {
            id: detail

            anchors.fill: parent
            anchors.margins: Vzhled.gap
            wrapMode: Text.WrapAtWordBoundaryOrAnywhere
            text: view.model.detail
        }
    }

    CaptionText {
        Layout.fillWidth: true
        text: qsTr("Potvrdit můžeš tady i hlasem na telefonu. Bez potvrzení se neprovede nic — ani po vypršení.")
    }

    ApprovalButtons {
        Layout.fillWidth: true
        model: view.model
    }
}
