import Morvex
import QtQuick
import QtQuick.Layouts

Karta {
    id: view

    required property AboutModel model

    title: qsTr("O aplikaci")
    glyph: "info"

    Note {
        visible: text !== ""
        trouble: true
        text: view.model.trouble
    }

    RadekStavu {
        nazev: qsTr("Identifikátor")
        hodnota: view.model.identifier
    }

    RadekStavu {
        nazev: qsTr("Verze protokolu")
        hodnota: view.model.protocolVersion
    }

    RadekStavu {
        nazev: qsTr("Verze aplikace")
        hodnota: view.model.appVersion
    }

    ButtonRow {
        Layout.fillWidth: true
        visible: view.model.identifier !== ""

        CopyButton {
            what: qsTr("Identifikátor")
            onCopy: view.model.copyIdentifier()
        }
    }

    CaptionText {
        Layout.fillWidth: true
        text: qsTr("Morvex běží bez systémového sandboxu, protože pouští tvoje vlastní programy a pracuje v tvých složkách. Přístup k souborům hlídá seznam povolených složek.")
    }
}
