import Morvex
import QtQuick
import QtQuick.Layouts

/// Rows of switches under one title.
ColumnLayout {
    id: group

    required property string title
    required property IntegrationsModel model
    property alias rows: repeater.model
    /// Wants to open the sheet of a row.
    signal managing(string sheet)

    Layout.fillWidth: true
    Layout.topMargin: Vzhled.hairGap
    spacing: Vzhled.smallGap
    Accessible.role: Accessible.Grouping
    Accessible.name: title

    CaptionText {
        text: group.title
        font.weight: Font.DemiBold
        Accessible.ignored: true
    }

    Repeater {
        id: repeater

        ColumnLayout {
            id: entry

            required property IntegrationRow modelData

            Layout.fillWidth: true
            spacing: Vzhled.smallGap

            Divider {}

            ToggleRow {
                name: entry.modelData.name
                detail: entry.modelData.detail
                problem: entry.modelData.problem
                value: entry.modelData.on
                available: entry.modelData.available
                action: entry.modelData.action === "" && problem !== "" ? qsTr("Zjistit znovu") : entry.modelData.action
                onWanted: on => entry.modelData.on = on
                onActed: {
                    if (entry.modelData.action === "")
                        group.model.detectAgain();
                    else if (entry.modelData.sheet === "")
                        entry.modelData.act();
                    else
                        group.managing(entry.modelData.sheet);
                }
            }
        }
    }
}
