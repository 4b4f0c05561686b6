import Morvex
import QtQuick
import QtQuick.Layouts

Karta {
    id: view

    required property WakefulnessModel model

    title: qsTr("Dostupnost")
    glyph: "power"

    ToggleRow {
        name: qsTr("Spouštět po přihlášení")
        problem: view.model.loginTrouble
        value: view.model.startsAtLogin
        onWanted: on => view.model.startsAtLogin = on
    }

    Divider {}

    ToggleRow {
        name: qsTr("Při napájení udržovat Morvex dostupný")
        detail: view.model.state
        problem: view.model.wakeTrouble
        value: view.model.staysAwake
        onWanted: on => view.model.staysAwake = on
    }

    Note {
        visible: text !== ""
        trouble: true
        text: view.model.trouble
    }

    CaptionText {
        Layout.fillWidth: true
        text: qsTr("Na baterii Mac usne bez ohledu na tohle nastavení. Bránit spánku bez napájení by ti vybilo notebook v tašce.")
    }
}
