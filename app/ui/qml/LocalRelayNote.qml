import Morvex

/// Shown if only this computer can reach the relay.
Note {
    required property PairingModel model

    visible: model.relayIsLocal
    text: qsTr("Adresa relaye vede jen na tento počítač. Jiné zařízení se přes ni nepřipojí.")
}
