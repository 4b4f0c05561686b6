import Morvex
import QtQuick
import QtQuick.Layouts

Karta {
    id: view

    required property LinkModel model

    title: qsTr("Spojení")
    glyph: "link"

    RadekStavu {
        nazev: qsTr("Telefon")
        hodnota: view.model.availability
        pictureSource: `image://glyph/availability/${view.model.symbol}/${Vzhled.hex(view.model.needsAttention ? Vzhled.attention : Vzhled.accent)}`
        barva: view.model.needsAttention ? Vzhled.attention : view.model.usable ? Vzhled.accent : Vzhled.text
    }

    SideRow {
        visible: view.model.nextAttempt !== ""
        controls: ActionButton {
            text: qsTr("Zkusit hned")
            onClicked: view.model.tryNow()
        }

        BodyText {
            Layout.fillWidth: true
            text: view.model.nextAttempt
            color: Vzhled.secondaryText
        }
    }

    RadekStavu {
        nazev: qsTr("Relay")
        hodnota: view.model.relay
    }

    CaptionText {
        Layout.fillWidth: true
        visible: text !== ""
        text: view.model.placeOfKeys
    }

    Note {
        visible: text !== ""
        trouble: true
        text: view.model.trouble
    }
}
