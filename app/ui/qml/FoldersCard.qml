import Morvex
import QtQuick
import QtQuick.Layouts

Karta {
    id: view

    required property FoldersModel model

    title: qsTr("Povolené složky")
    glyph: "folder"

    BodyText {
        Layout.fillWidth: true
        visible: view.model.rows.count === 0
        text: qsTr("Žádná. Bez povolené složky nemá Codex ani Claude Code kde pracovat, takže se telefonu vůbec nenabídnou.")
    }

    Note {
        visible: view.model.anyNeedsRenewal
        trouble: true
        text: qsTr("U složek označených níže je potřeba jednou obnovit přístup. Klikni na Přidat nebo obnovit složku a vyber je znovu.")
    }

    Repeater {
        model: view.model.rows

        FolderRow {
            model: view.model
        }
    }

    Note {
        visible: text !== ""
        trouble: true
        text: view.model.trouble
    }

    CaptionText {
        Layout.fillWidth: true
        text: qsTr("Přidat složku jde jen odsud. Telefon ani asistentka seznam rozšířit nemůžou.")
    }

    ButtonRow {
        Layout.fillWidth: true

        ActionButton {
            text: qsTr("Přidat nebo obnovit složku")
            onClicked: view.model.add()
        }
    }
}
