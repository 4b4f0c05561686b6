import Morvex
import QtQuick
import QtQuick.Layouts

/// The scrolling column of cards.
ScrollArea {
    id: view

    required property CompanionModel companion

    content: column
    margin: Vzhled.pageMargin
    contentWidth: width
    contentHeight: column.implicitHeight + 2 * Vzhled.pageMargin
    clip: true
    focus: true
    // If the focus is on something that is not a control, such as a card, Tab continues from there.
    Keys.onTabPressed: Window.activeFocusItem.nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
    Keys.onBacktabPressed: Window.activeFocusItem.nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)

    ConfirmationSheet {
        id: clearing

        title: qsTr("Vymazat historii úkolů?")
        text: qsTr("Úkoly zůstanou v Claude a Codexu, ale Morvex už k nim nebude nabízet tlačítka pro pokračování.")
        action: qsTr("Vymazat historii")
        onConfirmed: view.companion.tasks.clear()
    }

    ConfirmationSheet {
        id: unpairing

        title: qsTr("Odpojit telefon?")
        text: qsTr("Telefon tenhle Mac přestane vidět. Aby se k němu zase dostal, budeš ho muset znovu spárovat.")
        action: qsTr("Odpojit")
        onConfirmed: view.companion.pairing.unpair()
    }

    PoznamkaNaMacu {
        id: reading

        onKopirovat: text => records.copy(text)
    }

    CustomAppsSettingsView {
        id: customApps

        model: view.companion.customApps
        onEditing: app => {
            close();
            editor.edit(app);
        }
        onRemoving: app => {
            close();
            removal.ask(app);
        }
        onInspecting: app => {
            close();
            toolNews.show(app);
        }
    }

    ConfirmationSheet {
        id: removal

        property string appId

        function ask(app: var) {
            appId = app.id;
            title = qsTr("Odebrat aplikaci „%1“?").arg(app.name);
            open();
        }

        text: qsTr("Odebere se i její token. Asistentka pak její nástroje nebude mít.")
        action: qsTr("Odebrat")
        onConfirmed: view.companion.customApps.remove(appId)
        onClosed: customApps.open()
    }

    MacCalendarSelectionView {
        id: calendars

        model: view.companion.calendars
    }

    MailSheets {
        id: mail

        companion: view.companion
    }

    ConfirmationSheet {
        id: wideFolder

        function ask() {
            if (view.companion.folders.askedPath !== "")
                open();
            else
                close();
        }

        title: qsTr("Povolit složku %1?").arg(view.companion.folders.askedPath)
        text: view.companion.folders.warning
        action: qsTr("Povolit")
        onConfirmed: view.companion.folders.allowAsked()
        onRefused: view.companion.folders.refuseAsked()
        // The question may have been asked while the window was closed.
        Component.onCompleted: Qt.callLater(ask)
    }

    Connections {
        target: view.companion.folders
        function onAsking() {
            wideFolder.ask();
        }
    }

    ToolNewsView {
        id: toolNews

        onClosed: customApps.open()
        model: view.companion.customApps
    }

    CustomAppEditor {
        id: editor

        onClosed: customApps.open()
        model: view.companion.customApps
    }

    Connections {
        target: view.companion.approval
        function onChanged() {
            if (view.companion.approval.waiting)
                Qt.callLater(() => view.reveal(approval));
        }
    }

    FocusKeeper {
        area: column
    }

    ColumnLayout {
        id: column

        x: Math.max(Vzhled.pageMargin, (view.width - width) / 2)
        y: Vzhled.pageMargin
        width: Math.min(Vzhled.columnWidth, view.width - 2 * Vzhled.pageMargin)
        spacing: Vzhled.gap + Vzhled.hairGap

        ParovaniView {
            Layout.fillWidth: true
            model: view.companion.pairing
            onUnpairing: unpairing.open()
        }

        LinkCard {
            Layout.fillWidth: true
            model: view.companion.link
        }

        VoiceCard {
            Layout.fillWidth: true
            model: view.companion.voice
        }

        ApprovalCard {
            id: approval

            Layout.fillWidth: true
            model: view.companion.approval
        }

        MacIntegrationsView {
            Layout.fillWidth: true
            model: view.companion.integrations
            voice: view.companion.voice
            onManaging: sheet => ({
                    calendars: calendars.open,
                    customApps: customApps.open,
                    appleMail: mail.openApple,
                    directMail: mail.openDirect
                })[sheet]()
        }

        FoldersCard {
            Layout.fillWidth: true
            model: view.companion.folders
        }

        WakefulnessCard {
            Layout.fillWidth: true
            model: view.companion.wakefulness
        }

        TasksCard {
            Layout.fillWidth: true
            model: view.companion.tasks
            onClearing: clearing.open()
        }

        RecordsCard {
            Layout.fillWidth: true
            title: qsTr("Poznámky Morvex")
            glyph: "note"
            whenEmpty: qsTr("Poznámky vytvořené na iPhonu se po zabezpečeném spojení objeví tady a zůstanou dostupné i offline.")
            model: view.companion.notes
            onOpened: id => reading.read(model, id)
        }

        RecordsCard {
            Layout.fillWidth: true
            title: qsTr("Souhrny Morvex")
            glyph: "summary"
            whenEmpty: qsTr("Pravidelné souhrny vytvořené na iPhonu se objeví tady a zůstanou dostupné i offline.")
            model: view.companion.summaries
            onOpened: id => reading.read(model, id)
        }

        AboutCard {
            Layout.fillWidth: true
            model: view.companion.about
        }
    }
}
