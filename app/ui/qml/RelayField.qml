import Morvex
import QtQuick
import QtQuick.Layouts

/// The address of the relay for the next pairing.
ColumnLayout {
    id: relay

    required property PairingModel model
    /// Whether the typed address was refused.
    readonly property bool isRefused: model.relayProblem !== "" && entry.text.trim() !== model.relayAddress

    Layout.fillWidth: true
    spacing: Vzhled.smallGap

    /// Takes over the typed text even if the field still has the focus. False if it was refused.
    function commit(): bool {
        entry.commit();
        return !isRefused;
    }

    TextEntry {
        id: entry

        label: qsTr("Relay")
        hint: "https://relay.example.com"
        value: relay.model.relayAddress
        problem: refusal.visible ? refusal.text : ""
        onEdited: text => relay.model.relayAddress = text
    }

    Note {
        id: refusal

        visible: relay.isRefused
        trouble: true
        text: relay.model.relayProblem
    }

    LocalRelayNote {
        model: relay.model
    }
}
