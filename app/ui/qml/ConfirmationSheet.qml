import Morvex
import QtQuick
import QtQuick.Layouts

/// Asks before something that cannot be undone. Enter and Escape change nothing.
Sheet {
    id: sheet

    required property string text
    required property string action
    property bool isConfirmed
    /// Exactly one of the two is emitted, after the sheet has closed.
    signal confirmed
    signal refused

    onAboutToShow: isConfirmed = false
    onClosed: isConfirmed ? confirmed() : refused()

    buttons: [
        ActionButton {
            kind: ActionButton.Kind.Warning
            text: sheet.action
            subject: sheet.title + "\n" + sheet.text
            onClicked: {
                // The question may have changed during the press.
                if (meant !== subject)
                    return;
                sheet.isConfirmed = true;
                sheet.close();
            }
        },
        ActionButton {
            focus: true
            text: qsTr("Zrušit")
            onClicked: sheet.close()
        }
    ]

    BodyText {
        Layout.fillWidth: true
        text: sheet.text
    }
}
