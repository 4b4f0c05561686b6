import QtQuick
import QtQuick.Layouts

/// A card: a drawing and a title over its content, on a rounded ground.
Rectangle {
    id: card

    property string title
    property string glyph
    property bool urgent: false
    default property alias obsah: content.data

    implicitHeight: column.implicitHeight + 2 * Vzhled.cardPadding
    radius: Vzhled.cardRadius
    color: Vzhled.card
    border.color: urgent ? Vzhled.attention : Vzhled.line
    border.width: urgent ? 2 : 1
    Accessible.role: Accessible.Grouping
    Accessible.name: title

    ColumnLayout {
        id: column

        anchors.fill: parent
        anchors.margins: Vzhled.cardPadding
        spacing: Vzhled.gap

        RowLayout {
            spacing: Vzhled.gap

            Rectangle {
                implicitWidth: 32
                implicitHeight: 32
                radius: 9
                color: card.urgent ? Vzhled.attentionTint : Vzhled.accentTint

                Glyph {
                    anchors.centerIn: parent
                    name: card.glyph
                    color: card.urgent ? Vzhled.attention : Vzhled.accent
                }
            }

            Text {
                Layout.fillWidth: true
                text: card.title
                color: Vzhled.text
                font.pixelSize: Vzhled.headingSize
                font.weight: Font.DemiBold
                elide: Text.ElideRight
                textFormat: Text.PlainText
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
        }

        ColumnLayout {
            id: content

            Layout.fillWidth: true
            spacing: Vzhled.gap
        }
    }
}
