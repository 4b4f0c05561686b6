import Morvex
import QtQuick
import QtQuick.Layouts

/// Which relay the next pairing uses.
ColumnLayout {
    id: relay

    required property PairingModel model
    /// What stands in the field was not taken.
    readonly property bool isRefused: model.relayProblem !== "" && entry.text.trim() !== model.relayAddress

    Layout.fillWidth: true
    spacing: Vzhled.smallGap

    /// What was typed counts, also when the keyboard is still there. False when it was not taken.
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
