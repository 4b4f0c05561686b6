import QtQuick
import QtQuick.Layouts

/// One task of an agent.
SideRow {
    id: row

    required property var ukol
    signal otevrit
    signal zastavit

    controls: [
        ActionButton {
            visible: row.ukol.running
            kind: ActionButton.Kind.Warning
            text: qsTr("Zastavit")
            Accessible.name: `${text}: ${row.ukol.title}`
            onClicked: row.zastavit()
        },
        ActionButton {
            visible: !row.ukol.running
            text: row.ukol.continuation
            Accessible.name: `${text}: ${row.ukol.title}`
            onClicked: row.otevrit()
        }
    ]

    BodyText {
        Layout.fillWidth: true
        text: row.ukol.title
        maximumLineCount: 2
        elide: Text.ElideRight
    }

    CaptionText {
        Layout.fillWidth: true
        text: row.ukol.state
        color: row.ukol.running ? Vzhled.accent : row.ukol.failed ? Vzhled.attention : Vzhled.secondaryText
    }

    CaptionText {
        Layout.fillWidth: true
        visible: text !== ""
        text: row.ukol.detail
        maximumLineCount: 3
        elide: Text.ElideRight
    }
}
