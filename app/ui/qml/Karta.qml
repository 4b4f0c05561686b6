import QtQuick
import QtQuick.Layouts

/// A card: a drawing and a title over its content, on a rounded ground.
Rectangle {
    id: card

    property string title
    property string glyph
    property bool urgent: false
    /// A message that came while a focused control of this card disappeared. The card then has the focus, and
    /// screen readers read the message as its description.
    property string news
    default property alias obsah: content.data

    implicitHeight: header.height + Vzhled.gap + content.implicitHeight + 2 * Vzhled.cardPadding
    radius: Vzhled.cardRadius
    color: Vzhled.card
    border.color: urgent ? Vzhled.attention : Vzhled.line
    border.width: urgent ? 2 : 1
    Accessible.role: Accessible.Grouping
    Accessible.name: title
    Accessible.description: news

    // No layout around the content's own layout: nested layouts do not settle in time with wrapped texts.
    Item {
        id: header

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.margins: Vzhled.cardPadding
        height: Math.max(ground.height, heading.implicitHeight)

        Rectangle {
            id: ground

            width: 32
            height: 32
            radius: 9
            color: card.urgent ? Vzhled.attentionTint : Vzhled.accentTint

            Glyph {
                anchors.centerIn: parent
                name: card.glyph
                color: card.urgent ? Vzhled.attention : Vzhled.accent
            }
        }

        BodyText {
            id: heading

            anchors.left: ground.right
            anchors.leftMargin: Vzhled.gap
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            text: card.title
            lineHeight: 1
            font.pixelSize: Vzhled.headingSize
            font.weight: Font.DemiBold
            Accessible.role: Accessible.Heading
        }
    }

    ColumnLayout {
        id: content

        anchors.left: header.left
        anchors.right: header.right
        anchors.top: header.bottom
        anchors.topMargin: Vzhled.gap
        spacing: Vzhled.gap
    }
}
