import Morvex
import QtQuick
import QtQuick.Layouts

/// What has changed in the tools of a custom app, and whether such tools wait until a person has looked.
Sheet {
    id: sheet

    required property CustomAppsModel model
    property string appId
    property bool holdsChanges
    property var news: []

    function show(app: var) {
        appId = app.id;
        holdsChanges = app.holdsChanges;
        title = qsTr("Změny nástrojů: %1").arg(app.name);
        news = model.newsOf(appId);
        open();
    }

    buttons: [
        ActionButton {
            visible: sheet.news.length > 0
            kind: ActionButton.Kind.Main
            text: qsTr("Beru na vědomí")
            onClicked: {
                sheet.model.looked(sheet.appId);
                sheet.close();
            }
        },
        ActionButton {
            focus: true
            text: qsTr("Zavřít")
            onClicked: sheet.close()
        }
    ]

    ToggleRow {
        name: qsTr("Změny nástrojů nejdřív schválit")
        detail: qsTr("Změněný nebo nový nástroj pak asistentka nedostane, dokud se na něj nepodíváš.")
        value: sheet.holdsChanges
        onWanted: on => {
            sheet.holdsChanges = on;
            sheet.model.setHoldsChanges(sheet.appId, on);
        }
    }

    Divider {}

    BodyText {
        Layout.fillWidth: true
        visible: sheet.news.length === 0
        text: qsTr("Od posledního pohledu se nic nezměnilo.")
    }

    Repeater {
        model: sheet.news

        ColumnLayout {
            id: entry

            required property var modelData

            Layout.fillWidth: true
            spacing: Vzhled.hairGap

            BodyText {
                Layout.fillWidth: true
                text: entry.modelData.isNew ? qsTr("Nový nástroj: %1").arg(entry.modelData.name) : qsTr("Změněný nástroj: %1").arg(entry.modelData.name)
                font.weight: Font.DemiBold
            }

            CaptionText {
                Layout.fillWidth: true
                visible: !entry.modelData.isNew
                text: qsTr("Bylo: %1").arg(entry.modelData.before)
            }

            CaptionText {
                Layout.fillWidth: true
                text: (entry.modelData.isPast ? qsTr("Mezitím bylo: %1") : qsTr("Je: %1")).arg(entry.modelData.after)
            }
        }
    }
}
