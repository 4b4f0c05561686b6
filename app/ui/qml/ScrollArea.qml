import QtQuick
import QtQuick.Templates as T

/// Content that scrolls: with the wheel, with the keys that no control in it wants, and to whatever gets the keyboard.
Flickable {
    id: area

    required property Item content
    property int margin: 0
    /// Has the keyboard, and was in sight when it got it and after each scrolling since.
    property Item inSight: null

    /// Scrolls as little as shows the whole item, or its top where it is too high.
    function reveal(item: Item) {
        const top = item.mapToItem(contentItem, 0, 0).y - margin;
        const bottom = top + item.height + 2 * margin;
        if (top < contentY || bottom - top > height)
            scrollTo(top);
        else if (bottom > contentY + height)
            scrollTo(bottom - height);
    }

    function isInSight(item: Item): bool {
        const top = item.mapToItem(contentItem, 0, 0).y;
        return top + item.height > contentY && top < contentY + height;
    }

    /// What grows above it does not push it out of sight.
    function keepInSight() {
        if (inSight)
            reveal(inSight);
    }

    function scrollTo(y: real) {
        contentY = Math.max(0, Math.min(contentHeight - height, y));
    }

    boundsBehavior: Flickable.StopAtBounds
    onContentHeightChanged: Qt.callLater(keepInSight)
    onContentYChanged: if (inSight && !isInSight(inSight))
        inSight = null
    Keys.onUpPressed: scrollTo(contentY - Vzhled.scrollStep)
    Keys.onDownPressed: scrollTo(contentY + Vzhled.scrollStep)
    Keys.onPressed: event => {
        const goals = {
            [Qt.Key_PageUp]: contentY - height + Vzhled.scrollStep,
            [Qt.Key_PageDown]: contentY + height - Vzhled.scrollStep,
            [Qt.Key_Home]: 0,
            [Qt.Key_End]: contentHeight
        };
        event.accepted = event.key in goals;
        if (event.accepted)
            scrollTo(goals[event.key]);
    }

    T.ScrollBar.vertical: ScrollHandle {}

    function isIn(item: Item, outer: Item): bool {
        for (let parent = item?.parent; parent; parent = parent.parent)
            if (parent === outer)
                return true;
        return false;
    }

    Connections {
        property Item before

        target: area.Window.window
        function onActiveFocusItemChanged() {
            const item = area.Window.window?.activeFocusItem;
            const goesOutward = area.isIn(before, item);
            before = item;
            area.inSight = null;
            // A row that was scrolled out of sight gave the keyboard to what is around it, which is where it was.
            if (goesOutward)
                return;
            for (let parent = item?.parent; parent; parent = parent.parent) {
                (parent as RecordsList)?.reveal(item as RecordRow);
                if (parent === area.content) {
                    area.reveal(item);
                    area.inSight = item;
                }
            }
        }
    }
}
