import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T

/// Title and date of a text; a press opens it.
T.Button {
    id: row

    required property var modelData
    required property int index
    /// For `PressGuard`, because a row is reused for other records.
    readonly property string subject: modelData.id

    implicitHeight: column.implicitHeight + topPadding + bottomPadding
    padding: 10
    leftPadding: 12
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    Accessible.name: modelData.title
    Accessible.description: subtitle.text
    Accessible.onPressAction: row.clicked()
    Keys.onReturnPressed: row.clicked()
    Keys.onEnterPressed: row.clicked()

    contentItem: ColumnLayout {
        id: column

        spacing: 1

        BodyText {
            Layout.fillWidth: true
            text: row.modelData.title
            wrapMode: Text.NoWrap
            elide: Text.ElideRight
            Accessible.ignored: true
        }

        CaptionText {
            id: subtitle

            Layout.fillWidth: true
            text: qsTr("Upraveno %1").arg(row.modelData.date)
            Accessible.ignored: true
        }
    }

    background: Rectangle {
        radius: Vzhled.controlRadius
        color: row.down ? Vzhled.pressed : row.hovered ? Vzhled.hover : Vzhled.field
        border.color: Vzhled.line
    }

    FocusRing {
        control: row
    }
}
