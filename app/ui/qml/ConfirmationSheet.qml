import Morvex
import QtQuick
import QtQuick.Layouts

/// A question before something that cannot be taken back. Enter and Escape leave everything as it is.
Sheet {
    id: sheet

    required property string text
    required property string action
    property bool isConfirmed
    /// One of both, once the sheet has closed.
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
                // Another question may have come under the press.
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
