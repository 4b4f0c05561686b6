import QtQuick
import QtQuick.Layouts

/// A note or a summary, whole. `kopirovat` asks for its text.
Sheet {
    id: sheet

    property var note: ({})
    signal kopirovat(string text)

    title: note.title ?? ""
    buttons: [
        ActionButton {
            text: qsTr("Kopírovat")
            onClicked: sheet.kopirovat(sheet.note.body)
        },
        ActionButton {
            focus: true
            kind: ActionButton.Kind.Main
            text: qsTr("Zavřít")
            onClicked: sheet.close()
        }
    ]

    CaptionText {
        Layout.fillWidth: true
        text: qsTr("Upraveno %1").arg(sheet.note.date ?? "")
    }

    BodyText {
        Layout.fillWidth: true
        text: sheet.note.body ?? ""
        wrapMode: Text.WrapAtWordBoundaryOrAnywhere
    }
}
