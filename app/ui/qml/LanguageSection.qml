import Morvex
import QtQuick
import QtQuick.Layouts

/// The language of the program and its assistant.
ColumnLayout {
    id: section

    required property VoiceModel model

    Layout.fillWidth: true
    Layout.topMargin: Vzhled.hairGap
    spacing: Vzhled.smallGap

    Divider {}

    SideRow {
        controls: Picker {
            Accessible.name: qsTr("Jazyk aplikace a asistentky")
            model: section.model.languages
            textRole: "name"
            currentIndex: section.model.languageIndex
            onActivated: index => section.model.setLanguageMode(section.model.languages[index].mode)
        }

        BodyText {
            Layout.fillWidth: true
            text: qsTr("Jazyk aplikace a asistentky")
            Accessible.ignored: true
        }

        CaptionText {
            Layout.fillWidth: true
            text: qsTr("Výchozí volba se synchronizuje z hlavního iPhonu.")
        }
    }
}
