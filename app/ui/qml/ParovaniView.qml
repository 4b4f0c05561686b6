import Morvex
import QtQuick
import QtQuick.Layouts

/// The pairing with a phone in its current state.
Karta {
    id: view

    required property PairingModel model
    readonly property int situation: model.situation
    signal unpairing

    title: qsTr("Párování s telefonem")
    glyph: "phone"
    news: ({
            [PairingModel.NoKeys]: keys.text,
            [PairingModel.Creating]: creating.text,
            [PairingModel.Comparing]: `${comparison.words} ${left.text}`.trim(),
            [PairingModel.Failed]: failure.text
        })[situation] ?? ""

    ColumnLayout {
        visible: view.situation === PairingModel.LoadingKeys || view.situation === PairingModel.NoKeys
        spacing: Vzhled.gap

        Note {
            id: keys

            trouble: view.situation === PairingModel.NoKeys
            text: view.model.keys
        }

        ButtonRow {
            Layout.fillWidth: true

            ActionButton {
                kind: ActionButton.Kind.Main
                text: qsTr("Zkusit znovu")
                onClicked: view.model.loadKeys()
            }
        }
    }

    ColumnLayout {
        visible: view.situation === PairingModel.NoPhone
        spacing: Vzhled.gap

        BodyText {
            Layout.fillWidth: true
            text: qsTr("Zatím žádný telefon. Morvex for Mac nic nedělá, dokud se nespáruje.")
        }

        RelayField {
            id: relay

            model: view.model
        }

        ButtonRow {
            Layout.fillWidth: true

            ActionButton {
                kind: ActionButton.Kind.Main
                text: qsTr("Zobrazit QR kód")
                onClicked: {
                    if (relay.commit())
                        view.model.start();
                }
            }
        }
    }

    ColumnLayout {
        visible: view.situation === PairingModel.Paired
        spacing: Vzhled.gap

        RadekStavu {
            nazev: qsTr("Spárovaný telefon")
            hodnota: view.model.phone
        }

        CaptionText {
            Layout.fillWidth: true
            text: qsTr("Potvrzeno %1").arg(view.model.confirmedOn)
        }

        LocalRelayNote {
            model: view.model
        }

        ButtonRow {
            Layout.fillWidth: true

            ActionButton {
                text: qsTr("Spárovat jiný telefon")
                onClicked: view.model.start()
            }

            ActionButton {
                kind: ActionButton.Kind.Warning
                text: qsTr("Odpojit telefon")
                onClicked: view.unpairing()
            }
        }
    }

    BodyText {
        id: creating

        Layout.fillWidth: true
        visible: view.situation === PairingModel.Creating
        text: qsTr("Zakládám pár…")
    }

    PairingCode {
        visible: view.situation === PairingModel.ShowingCode
        model: view.model
    }

    NumberComparison {
        id: comparison

        visible: view.situation === PairingModel.Comparing
        model: view.model
    }

    Note {
        id: left

        visible: text !== "" && (view.situation === PairingModel.Comparing || view.situation === PairingModel.Paired)
        trouble: true
        text: view.model.phoneLeft
    }

    ColumnLayout {
        visible: view.situation === PairingModel.Failed
        spacing: Vzhled.gap

        Note {
            id: failure

            trouble: true
            text: view.model.failure
        }

        RelayField {
            id: otherRelay

            visible: !view.model.hasPhone
            model: view.model
        }

        LocalRelayNote {
            visible: view.model.hasPhone && view.model.relayIsLocal
            model: view.model
        }

        ButtonRow {
            Layout.fillWidth: true

            ActionButton {
                kind: ActionButton.Kind.Main
                text: qsTr("Zkusit znovu")
                onClicked: {
                    if (view.model.hasPhone || otherRelay.commit())
                        view.model.start();
                }
            }

            ActionButton {
                text: qsTr("Zrušit")
                onClicked: view.model.cancel()
            }
        }
    }
}
