import Morvex
import QtQuick
import QtQuick.Layouts

/// Which relay the next pairing uses.
ColumnLayout {
    id: relay

    required property PairingModel model

    Layout.fillWidth: true
    spacing: Vzhled.smallGap

    TextEntry {
        label: qsTr("Relay")
        hint: "https://relay.example.com"
        value: relay.model.relayAddress
        onEdited: text => relay.model.relayAddress = text
    }

    Note {
        visible: relay.model.relayIsLocal
        text: qsTr("Tahle adresa vede jen na tento počítač. Jiné zařízení se přes ni nepřipojí.")
    }
}
