import Morvex
import QtQuick
import QtQuick.Layouts

/// Which relay the next pairing uses.
ColumnLayout {
    id: relay

    required property PairingModel model

    Layout.fillWidth: true
    spacing: Vzhled.smallGap

    /// What was typed counts, also when the keyboard is still there.
    function commit() {
        entry.commit();
    }

    TextEntry {
        id: entry

        label: qsTr("Relay")
        hint: "https://relay.example.com"
        value: relay.model.relayAddress
        onEdited: text => relay.model.relayAddress = text
    }

    LocalRelayNote {
        model: relay.model
    }
}
