import Morvex
import QtQuick
import QtQuick.Layouts

/// Adds a direct mail account or changes one.
Sheet {
    id: sheet

    required property DirectMailModel model
    /// The account to change; null for a new one.
    property var account: null
    signal removing(var account)

    function edit(changed: var) {
        account = changed;
        label.text = changed?.label ?? "";
        address.text = changed?.address ?? "";
        senderName.text = changed?.senderName ?? "";
        imapHost.text = changed?.imapHost ?? "";
        smtpHost.text = changed?.smtpHost ?? "";
        password.text = "";
        model.startEditing();
        open();
    }

    function save(test: bool) {
        model.save({
            id: account?.id ?? "",
            label: label.text,
            address: address.text,
            senderName: senderName.text,
            imapHost: imapHost.text,
            smtpHost: smtpHost.text
        }, password.text, test);
    }

    title: account ? qsTr("Upravit SMTP účet") : qsTr("Přidat SMTP účet")
    onOpened: label.take()
    buttons: [
        ActionButton {
            visible: sheet.account !== null
            kind: ActionButton.Kind.Warning
            text: qsTr("Odstranit účet")
            onClicked: sheet.removing(sheet.account)
        },
        ActionButton {
            text: qsTr("Zrušit")
            onClicked: sheet.close()
        },
        ActionButton {
            enabled: !sheet.model.saving
            text: qsTr("Uložit")
            outcome: activeFocus ? sheet.model.error : ""
            onClicked: sheet.save(false)
        },
        ActionButton {
            kind: ActionButton.Kind.Main
            enabled: !sheet.model.saving
            text: qsTr("Uložit a ověřit")
            outcome: activeFocus ? sheet.model.error : ""
            onClicked: sheet.save(true)
        }
    ]

    Connections {
        target: sheet.model
        function onSaved() {
            sheet.close();
        }
    }

    BodyText {
        Layout.fillWidth: true
        color: Vzhled.secondaryText
        text: qsTr("Stejné údaje jako v iPhone aplikaci. IMAP používá port 993 a SMTP port 465 se šifrováním TLS.")
    }

    TextEntry {
        id: label

        label: qsTr("Název účtu")
        onAccepted: sheet.save(true)
    }

    TextEntry {
        id: address

        label: qsTr("E-mailová adresa")
        hint: "eva@example.com"
        onAccepted: sheet.save(true)
    }

    TextEntry {
        id: senderName

        label: qsTr("Jméno odesílatele")
        onAccepted: sheet.save(true)
    }

    TextEntry {
        id: imapHost

        label: qsTr("IMAP server")
        hint: "imap.example.com"
        onAccepted: sheet.save(true)
    }

    TextEntry {
        id: smtpHost

        label: qsTr("SMTP server")
        hint: "smtp.example.com"
        onAccepted: sheet.save(true)
    }

    TextEntry {
        id: password

        label: qsTr("Heslo nebo heslo pro aplikaci")
        echoMode: TextInput.Password
        hint: sheet.account ? "••••••••" : ""
        problem: sheet.model.error
        onAccepted: sheet.save(true)
    }

    CaptionText {
        Layout.fillWidth: true
        text: qsTr("Služby, které programům nedovolí heslo (Outlook, Microsoft 365), takhle připojit nejde.")
    }

    Note {
        visible: text !== ""
        trouble: true
        text: sheet.model.error
    }
}
