import QtQuick
import Tessaly.Shell
import Tessaly.Store
import Tessaly.Ui

/// The first start's question for the user's name.
Sheet {
    id: prompt

    required property ShellModel shell
    property alias nameDraft: field.text

    function save() {
        prompt.shell.answerNamePrompt(nameDraft);
        prompt.close();
    }

    function postpone() {
        prompt.shell.postponeNamePrompt();
        prompt.close();
    }

    title: Language.text("欢迎来到 Tessaly", "Welcome to Tessaly")
    titleToken: Theme.welcomeTitle
    sheetWidth: 380
    sidePadding: 28
    headPadding: 28
    bodyTopPadding: 18
    bodyBottomPadding: 28
    bodySpacing: 18
    onAboutToShow: nameDraft = ""
    onOpened: field.forceActiveFocus(Qt.PopupFocusReason)
    onLeaving: postpone()

    AppText {
        id: question

        width: parent.width
        text: Language.text("我该如何称呼你？", "What should I call you?")
        color: Theme.textSecondary
    }

    AppTextField {
        id: field

        width: parent.width
        height: 36
        focus: true
        font.pixelSize: Theme.body.size
        name: question.text
        placeholderText: Language.text("例如：Brennic", "e.g. Brennic")
        onAccepted: prompt.save()
    }

    Item {
        width: parent.width
        height: Theme.controlHeight

        // For users who cannot read the initial language.
        SegmentedControl {
            anchors.verticalCenter: parent.verticalCenter
            height: Theme.smallControlHeight
            segmentPadding: 9
            name: Language.text("语言", "Language")
            labels: ["中文", "English"]
            currentIndex: PlannerStore.isEnglish ? 1 : 0
            onChosen: index => {
                PlannerStore.interfaceLanguage = index === 1 ? Planner.English : Planner.Chinese;
                // After a click the name can be typed at once.
                if (isClicked)
                    field.forceActiveFocus(Qt.OtherFocusReason);
            }
        }

        Row {
            anchors.right: parent.right
            spacing: 8

            AppButton {
                isRaised: true
                text: Language.text("稍后再说", "Later")
                onClicked: prompt.postpone()
            }

            AppButton {
                kind: AppButton.Primary
                text: Language.text("开始使用", "Get started")
                onClicked: prompt.save()
            }
        }
    }
}
