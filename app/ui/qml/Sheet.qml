import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T

/// A sheet over the window: a title, content that scrolls if it is long, and a row of buttons.
T.Popup {
    id: sheet

    property string title
    property alias buttons: buttonRow.data
    default property alias content: column.data

    parent: T.Overlay.overlay
    anchors.centerIn: parent
    width: Math.min(520, (parent?.width ?? 0) - 2 * Vzhled.pageMargin)
    height: Math.min(frame.implicitHeight + 2 * Vzhled.cardPadding, (parent?.height ?? 0) - 2 * Vzhled.pageMargin)
    padding: Vzhled.cardPadding
    modal: true
    focus: true
    closePolicy: T.Popup.CloseOnEscape

    T.Overlay.modal: Rectangle {
        color: Qt.rgba(0, 0, 0, 0.45)
    }

    background: Rectangle {
        radius: Vzhled.cardRadius
        color: Vzhled.card
        border.color: Vzhled.line
    }

    contentItem: ColumnLayout {
        id: frame

        spacing: Vzhled.gap
        Keys.forwardTo: [area]
        Accessible.role: Accessible.Dialog
        Accessible.name: sheet.title

        BodyText {
            Layout.fillWidth: true
            text: sheet.title
            font.pixelSize: Vzhled.headingSize
            font.weight: Font.DemiBold
            Accessible.role: Accessible.Heading
        }

        ScrollArea {
            id: area

            content: column
            Layout.fillWidth: true
            Layout.fillHeight: true
            implicitHeight: column.implicitHeight
            contentHeight: column.implicitHeight
            clip: contentHeight > height

            ColumnLayout {
                id: column

                width: area.width
                spacing: Vzhled.gap
            }
        }

        ButtonRow {
            id: buttonRow

            Layout.fillWidth: true
            Layout.topMargin: Vzhled.hairGap
        }
    }
}
