pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Window
import Tessaly.Schedule
import Tessaly.Ui

/// The linked calendars and the field for another link.
Column {
    id: section

    required property CalendarSelectionModel viewModel

    signal detailsRequested(place: int)
    /// What is behind the typed link has appeared or changed.
    signal trialShown

    /// The next link's Delete takes the focus, else the previous one's, else the field for another link.
    function deleteFeed(place: int) {
        const reason = FocusHandover.reasonAfter(Window.activeFocusItem);
        viewModel.deleteFeed(place);
        const next = (feeds.itemAt(place) ?? feeds.itemAt(place - 1)) as CalendarFeedItem;
        if (next)
            next.focusDelete(reason);
        else
            field.forceActiveFocus(Qt.OtherFocusReason);
    }

    /// Gives the focus back to the link whose details were shown.
    function focusDetails(place: int, reason: int) {
        const feed = feeds.itemAt(place) as CalendarFeedItem;
        if (feed)
            feed.focusDetails(reason);
        else
            field.forceActiveFocus(reason);
    }

    spacing: 8

    Column {
        width: parent.width

        HeadingText {
            text: Language.text("通过链接导入", "Import from link")
        }

        AppText {
            width: parent.width
            isMultiline: true
            text: Language.text("支持 .ics / iCalendar 链接；保存后可随时点击更新。", "Paste an .ics / iCalendar link; update it anytime after saving.")
            token: Theme.control
            color: Theme.textSecondary
        }
    }

    Rectangle {
        width: parent.width
        height: feedColumn.height + 2
        visible: section.viewModel.feedCount > 0
        radius: Theme.popupRadius
        color: Theme.field
        border.width: 1
        border.color: Theme.border

        Column {
            id: feedColumn

            x: 1
            y: 1
            width: parent.width - 2

            Repeater {
                id: feeds

                model: section.viewModel.feeds

                CalendarFeedItem {
                    width: feedColumn.width
                    onDetailsRequested: section.detailsRequested(index)
                    onUpdateRequested: section.viewModel.updateFeed(index)
                    onDeleteRequested: section.deleteFeed(index)
                }
            }
        }
    }

    Item {
        width: parent.width
        height: Theme.controlHeight

        AppTextField {
            id: field

            width: testButton.x - 8
            // lint-allow(text): a link is the same in both languages
            placeholderText: "https://…/timetable.ics"
            inputMethodHints: Qt.ImhUrlCharactersOnly | Qt.ImhNoAutoUppercase
            text: section.viewModel.trial.url
            keepsReturn: true
            onTextEdited: section.viewModel.trial.url = text
            onAccepted: section.viewModel.addTypedLink()
        }

        AppButton {
            id: testButton

            anchors.right: addButton.left
            anchors.rightMargin: 8
            isRaised: true
            enabled: section.viewModel.trial.canTry
            text: Language.text("测试", "Test")
            onClicked: section.viewModel.trial.tryLink()
        }

        AppButton {
            id: addButton

            anchors.right: parent.right
            isRaised: true
            text: Language.text("添加并导入", "Add & import")
            onClicked: {
                if (section.viewModel.trial.url.trim() === "")
                    field.forceActiveFocus(Qt.OtherFocusReason);
                section.viewModel.addTypedLink();
            }

            PressGuard {
                anchors.fill: parent
            }
        }
    }

    LinkTrial {
        width: parent.width
        visible: trial.state !== LinkTrialModel.Idle
        trial: section.viewModel.trial
        onVisibleChanged: if (visible)
            section.trialShown()
        onHeightChanged: if (visible)
            section.trialShown()
        onFinished: field.forceActiveFocus(Qt.OtherFocusReason)
    }
}
