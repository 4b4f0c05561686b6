import QtQuick
import QtQuick.Templates as T

/// One of several values, in a list that opens below.
T.ComboBox {
    id: picker

    implicitWidth: Math.round(14.5 * Vzhled.bodySize)
    implicitHeight: Vzhled.controlHeight
    leftPadding: 12
    rightPadding: 34
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    // Qt does not report the value of a control that has its own name to a screen reader.
    Accessible.description: displayText
    Keys.onReleased: event => {
        event.accepted = !popup.visible && (event.key === Qt.Key_Return || event.key === Qt.Key_Enter);
        if (event.accepted)
            popup.open();
    }

    contentItem: Text {
        text: picker.displayText
        color: Vzhled.text
        font.pixelSize: Vzhled.bodySize
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
        textFormat: Text.PlainText
    }

    indicator: Glyph {
        x: picker.width - width - 10
        anchors.verticalCenter: picker.verticalCenter
        name: "chevron"
        color: Vzhled.secondaryText
        side: 16
    }

    background: Rectangle {
        radius: Vzhled.controlRadius
        color: picker.hovered ? Vzhled.hover : Vzhled.card
        border.color: Vzhled.fieldLine
    }

    delegate: T.ItemDelegate {
        id: option

        required property var modelData
        required property int index

        width: picker.width - 8
        implicitHeight: Vzhled.controlHeight
        hoverEnabled: true
        highlighted: picker.highlightedIndex === index
        Accessible.name: modelData[picker.textRole]

        contentItem: Text {
            leftPadding: 8
            text: option.modelData[picker.textRole]
            color: Vzhled.text
            font.pixelSize: Vzhled.bodySize
            font.weight: picker.currentIndex === option.index ? Font.DemiBold : Font.Normal
            verticalAlignment: Text.AlignVCenter
            textFormat: Text.PlainText
        }

        background: Rectangle {
            radius: Vzhled.controlRadius
            color: option.highlighted || option.hovered ? Vzhled.hover : Vzhled.card
        }
    }

    popup: T.Popup {
        y: picker.height + 4
        width: picker.width
        implicitHeight: contentItem.implicitHeight + 8
        padding: 4

        contentItem: ListView {
            implicitHeight: contentHeight
            model: picker.popup.visible ? picker.delegateModel : null
            currentIndex: picker.highlightedIndex
            interactive: false
        }

        background: Rectangle {
            radius: Vzhled.controlRadius
            color: Vzhled.card
            border.color: Vzhled.fieldLine
        }
    }

    FocusRing {
        control: picker
    }
}
