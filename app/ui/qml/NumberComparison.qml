import Morvex
import QtQuick
import QtQuick.Layouts

/// The number to compare: the phone shows the same one unless somebody intercepts the pairing.
ColumnLayout {
    id: view

    required property PairingModel model
    readonly property string words: `${question.text} ${model.number}`

    spacing: Vzhled.gap

    BodyText {
        id: question

        Layout.fillWidth: true
        text: qsTr("Telefon se ozval. Shoduje se tohle číslo s tím na jeho obrazovce?")
    }

    Text {
        Layout.alignment: Qt.AlignHCenter
        text: view.model.number
        color: Vzhled.accent
        font.pixelSize: Vzhled.numberSize
        font.weight: Font.DemiBold
        font.letterSpacing: 2
        textFormat: Text.PlainText
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    BodyText {
        Layout.fillWidth: true
        color: Vzhled.secondaryText
        text: qsTr("Když se čísla liší, nepotvrzuj. Znamená to, že mezi telefonem a Macem někdo je.")
    }

    ButtonRow {
        Layout.fillWidth: true

        ActionButton {
            id: agree

            kind: ActionButton.Kind.Main
            text: qsTr("Souhlasí")
            subject: view.model.number
            onClicked: view.model.confirm(agree.meant)
        }

        ActionButton {
            kind: ActionButton.Kind.Warning
            text: qsTr("Neshoduje se")
            subject: view.model.number
            onClicked: view.model.refuse()
        }
    }
}
