import Morvex
import QtQuick

/// The sheets of mail.
Item {
    id: sheets

    required property CompanionModel companion

    function openDirect() {
        direct.open();
    }

    function openApple() {
        apple.open();
    }

    AppleMailView {
        id: apple

        model: sheets.companion.appleMail
    }

    DirectMailView {
        id: direct

        model: sheets.companion.directMail
        onEditing: account => {
            close();
            editor.edit(account);
        }
    }

    DirectMailEditor {
        id: editor

        // The question about a removal comes in its place.
        property bool isRemoving: false

        model: sheets.companion.directMail
        onOpened: isRemoving = false
        onRemoving: account => {
            isRemoving = true;
            close();
            removal.ask(account);
        }
        onClosed: {
            if (!isRemoving)
                direct.open();
        }
    }

    ConfirmationSheet {
        id: removal

        property string accountId

        function ask(account: var) {
            accountId = account.id;
            title = qsTr("Odstranit účet „%1“?").arg(account.name);
            open();
        }

        text: qsTr("Odstraní se i jeho heslo. Pošta na serveru zůstane.")
        action: qsTr("Odstranit účet")
        onConfirmed: sheets.companion.directMail.remove(accountId)
        onClosed: direct.open()
    }
}
