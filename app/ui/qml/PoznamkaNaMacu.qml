import Morvex
import QtQuick
import QtQuick.Layouts

/// A whole note or summary. It follows its record: a newer version is shown, a removed record closes the
/// sheet. `kopirovat` asks for copying its text.
Sheet {
    id: sheet

    property RecordsModel records: null
    property var note: ({})
    signal kopirovat(string text)

    function read(from: RecordsModel, id: string) {
        records = from;
        note = from.find(id);
        copying.reset();
        open();
    }

    title: note.title ?? ""
    buttons: [
        CopyButton {
            id: copying

            onCopy: sheet.kopirovat(sheet.note.body)
        },
        ActionButton {
            focus: true
            kind: ActionButton.Kind.Main
            text: qsTr("Zavřít")
            onClicked: sheet.close()
        }
    ]

    Connections {
        target: sheet.records
        enabled: sheet.opened
        function onChanged() {
            const now = sheet.records.find(sheet.note.id);
            if (now.id === undefined)
                return sheet.close();
            sheet.note = now;
        }
    }

    CaptionText {
        Layout.fillWidth: true
        text: qsTr("Upraveno %1").arg(sheet.note.date ?? "")
    }

    CaptionText {
        Layout.fillWidth: true
        visible: text !== ""
        text: sheet.note.origin ?? ""
    }

    SelectableText {
        Layout.fillWidth: true
        text: sheet.note.body ?? ""
        wrapMode: TextEdit.WrapAtWordBoundaryOrAnywhere
    }
}
