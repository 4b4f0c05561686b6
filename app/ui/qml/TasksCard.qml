import Morvex
import QtQuick
import QtQuick.Layouts

Karta {
    id: view

    required property AgentTasksModel model
    readonly property bool empty: model.rows.count === 0
    signal clearing

    title: qsTr("Poslední úkoly")
    glyph: "tasks"

    BodyText {
        Layout.fillWidth: true
        visible: view.empty
        text: qsTr("Úkoly zadané Codexu nebo Claude přes telefon se objeví tady. Pak v nich můžeš pokračovat jedním kliknutím.")
    }

    Repeater {
        model: view.model.rows

        ColumnLayout {
            id: entry

            required property var modelData
            required property int index

            Layout.fillWidth: true
            spacing: Vzhled.gap

            Divider {
                visible: entry.index > 0
            }

            RadekUkoluAgenta {
                ukol: entry.modelData
                onOtevrit: view.model.resume(entry.modelData.id)
                onZastavit: view.model.stop(entry.modelData.id)
            }
        }
    }

    Note {
        visible: text !== ""
        trouble: true
        text: view.model.trouble
    }

    ButtonRow {
        Layout.fillWidth: true
        visible: !view.empty

        ActionButton {
            text: qsTr("Vymazat")
            Accessible.name: `${text}: ${view.title}`
            onClicked: view.clearing()
        }
    }
}
