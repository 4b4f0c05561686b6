import Morvex

/// Where the relay is on this computer alone.
Note {
    required property PairingModel model

    visible: model.relayIsLocal
    text: qsTr("Adresa relaye vede jen na tento počítač. Jiné zařízení se přes ni nepřipojí.")
}
