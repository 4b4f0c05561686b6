import QtQuick
import QtQuick.Templates as T

/// Content that scrolls with the wheel, with keys that no control in it uses, and to the control that gets
/// the focus.
Flickable {
    id: area

    required property Item content
    property int margin: 0
    /// The focused item, as long as it has been in sight since it got the focus.
    property Item inSight: null

    /// Scrolls just enough to show the whole item, or its top if it is too high.
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

    /// Keeps the focused item in sight when content above it grows.
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
            // A row that scrolled out of sight has passed the focus to the area around it, so nothing needs
            // to scroll.
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
