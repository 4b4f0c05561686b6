import Morvex
import QtQuick
import QtQuick.Layouts

/// Adds a custom app or changes one of this computer.
Sheet {
    id: sheet

    required property CustomAppsModel model
    /// The app to change; null for a new one.
    property var state: null

    function edit(app: var) {
        state = app;
        name.text = app?.name ?? "";
        endpoint.text = app?.endpoint ?? "";
        token.text = "";
        model.startEditing();
        open();
    }

    function save() {
        model.save(state?.id ?? "", name.text, endpoint.text, token.text);
    }

    title: state ? qsTr("Upravit vlastní aplikaci") : qsTr("Přidat vlastní aplikaci")
    onOpened: name.take()
    buttons: [
        ActionButton {
            kind: ActionButton.Kind.Main
            enabled: !sheet.model.saving
            text: qsTr("Uložit")
            outcome: activeFocus ? sheet.model.error : ""
            onClicked: sheet.save()
        },
        ActionButton {
            text: qsTr("Zrušit")
            onClicked: sheet.close()
        }
    ]

    Connections {
        target: sheet.model
        function onSaved() {
            sheet.close();
        }
    }

    TextEntry {
        id: name

        label: qsTr("Název")
        problem: sheet.model.error
        onAccepted: sheet.save()
    }

    TextEntry {
        id: endpoint

        label: qsTr("Adresa")
        hint: "https://example.com/api/mcp"
        problem: sheet.model.error
        onAccepted: sheet.save()
    }

    TextEntry {
        id: token

        label: qsTr("Token")
        echoMode: TextInput.Password
        hint: sheet.state ? qsTr("Nový token — ponech prázdné beze změny") : qsTr("Přístupový token — volitelný")
        problem: sheet.model.error
        onAccepted: sheet.save()
    }

    CaptionText {
        Layout.fillWidth: true
        text: qsTr("Token se ukládá pouze do Keychainu tohoto Macu.")
    }

    Note {
        visible: text !== ""
        trouble: true
        text: sheet.model.error
    }
}
