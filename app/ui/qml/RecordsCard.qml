import Morvex
import QtQuick
import QtQuick.Layouts

/// Texts from the phone, one in each row; a press opens it.
Karta {
    id: view

    required property RecordsModel model
    required property string whenEmpty
    signal opened(string id)

    CaptionText {
        text: qsTr("z iPhonu · E2EE")
    }

    BodyText {
        Layout.fillWidth: true
        visible: view.model.rows.count === 0
        text: view.whenEmpty
    }

    RecordsList {
        Layout.fillWidth: true
        visible: view.model.rows.count > 0
        records: view.model
        onOpened: id => view.opened(id)
    }

    Note {
        visible: text !== ""
        trouble: true
        text: view.model.trouble
    }
}
