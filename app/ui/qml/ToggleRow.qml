import QtQuick
import QtQuick.Layouts

/// A label with a detail below it, and a switch. Screen readers read everything at the switch, or at the
/// texts if the switch cannot be used.
SideRow {
    id: row

    property string name
    /// What a screen reader calls it, where the name alone is not unique.
    property string spokenName: name
    property string detail
    property string problem
    property bool value: false
    property bool available: true
    property string action
    signal wanted(bool on)
    signal acted

    controls: [
        ActionButton {
            visible: row.action !== ""
            text: row.action
            Accessible.name: `${row.action}: ${row.spokenName}`
            onClicked: row.acted()
        },
        ToggleSwitch {
            enabled: row.available
            value: row.value
            Accessible.name: row.spokenName
            Accessible.description: [row.detail, row.problem].filter(text => text !== "").join("\n")
            onWanted: on => row.wanted(on)
        }
    ]

    BodyText {
        Layout.fillWidth: true
        text: row.name
        opacity: row.available ? 1 : 0.6
        Accessible.ignored: row.available
    }

    CaptionText {
        Layout.fillWidth: true
        visible: text !== ""
        text: row.detail
        Accessible.ignored: row.available
    }

    CaptionText {
        Layout.fillWidth: true
        visible: text !== ""
        text: row.problem
        color: Vzhled.attention
        Accessible.ignored: row.available
    }
}
