import QtQuick
import QtQuick.Window
import Tessaly.Schedule
import Tessaly.Shell
import Tessaly.Store
import Tessaly.Ui

/// The add form: two lines on a wide page, four on a narrow one.
Entry {
    id: form

    required property ScheduleViewModel viewModel

    readonly property ScheduleFormModel fields: viewModel.form
    readonly property bool isWide: width >= 820
    /// From the card's edge, its border included.
    readonly property real pad: 15
    readonly property real gap: 12
    readonly property real lineGap: 14

    /// Whether something is being entered: the focus is here, and what was entered last has not just been added.
    readonly property bool isInUse: hasFocus && !isSpent
    readonly property bool hasFocus: {
        for (let item = Window.activeFocusItem as Item; item; item = item.parent) {
            if (item === form)
                return true;
        }
        return false;
    }
    property bool isSpent: false

    /// A schedule was added.
    signal added

    function focusTitle() {
        takeFocus();
    }

    /// A time that is refused takes the focus.
    function acceptTimes(): bool {
        return startPair.accept() && endPair.accept();
    }

    /// Whether a schedule was added.
    function submit(): bool {
        isSpent = acceptTimes() && viewModel.addSchedule();
        return isSpent;
    }

    function add() {
        if (!acceptTimes())
            return;
        const isAdded = submit();
        focusTitle();
        if (isAdded)
            added();
    }

    /// What was understood in the title are the times of this schedule alone.
    function addAsUnderstood() {
        if (reading.label === "") {
            add();
            return;
        }
        const [start, end] = [fields.start, fields.end];
        takeOver();
        add();
        const wasAdded = isSpent;
        fields.start = start;
        fields.end = end;
        isSpent = wasAdded;
    }

    /// Puts what was understood into the fields.
    function takeOver() {
        const [title, start, end] = [reading.title, reading.start, reading.end];
        fields.title = title;
        fields.start = start;
        fields.end = end;
        focusTitle();
    }

    field.width: (isWide ? startPair.x - gap : width - pad) - pad
    name: Language.text("日程名称", "Schedule name")
    placeholder: Language.text("例如：微观经济学 第1讲", "e.g. Microeconomics lecture 1")
    text: fields.title
    onTextEdited: text => form.fields.title = text
    suggestion: reading.label
    onAccepted: addAsUnderstood()
    onSuggestionTaken: takeOver()
    onSuggestionDismissed: reading.dismiss()
    onHasFocusChanged: isSpent = false
    implicitHeight: tagField.y + tagField.height + (isWide ? gap + 1 : pad)

    PhraseReader {
        id: reading

        store: PlannerStore
        phrase: form.fields.title
    }

    Connections {
        function onFieldsChanged() {
            form.isSpent = false;
        }

        target: form.fields
    }

    // A time that is chosen in the week or the month is the one that is meant, as one that is set in the fields.
    Connections {
        function onTimeChosen() {
            reading.dismiss();
        }

        target: form.viewModel
    }

    LabelledDateTime {
        id: startPair

        x: form.isWide ? endPair.x - form.gap - width : form.pad
        y: form.isWide ? form.pad : form.field.y + form.field.height + form.lineGap
        label: Language.text("开始", "Start")
        value: form.fields.start
        onEdited: value => {
            form.fields.start = value;
            reading.dismiss();
        }
        onAccepted: form.addAsUnderstood()
    }

    LabelledDateTime {
        id: endPair

        x: form.isWide ? addButton.x - form.gap - width : startPair.x + startPair.width + form.gap
        y: startPair.y
        label: Language.text("结束", "End")
        value: form.fields.end
        onEdited: value => {
            form.fields.end = value;
            reading.dismiss();
        }
        onAccepted: form.addAsUnderstood()
    }

    AppText {
        x: endPair.x + endPair.width - width
        y: endPair.y + endPair.height
        width: Math.min(implicitWidth, form.width - form.pad)
        height: form.lineGap
        text: form.fields.endNote
        token: Theme.mini
        color: Theme.destructive
    }

    AppButton {
        id: addButton

        x: form.width - form.pad - width
        y: startPair.y
        kind: AppButton.Primary
        text: Language.text("添加日程", "Add schedule")
        onClicked: form.addAsUnderstood()

        PressGuard {
            anchors.fill: parent
        }
    }

    Separator {
        id: line

        x: 1
        y: startPair.y + startPair.height + form.lineGap
        width: form.width - 2
    }

    Toggle {
        id: exportToggle

        x: form.pad
        y: line.y + 1 + form.gap
        text: Language.text("添加到%1", "Add to %1").arg(PlannerStore.calendarSync.serviceName)
        enabled: !noService.visible
        Accessible.description: enabled ? "" : noService.text
        checked: form.fields.isExportRequested
        onToggled: form.fields.isExportRequested = checked
    }

    NoServiceText {
        id: noService

        needsAccess: true

        readonly property real room: (form.isWide ? tagField.x - form.gap : form.width - form.pad) - calendarPair.leftX

        x: calendarPair.leftX
        width: Math.min(Math.ceil(implicitWidth), room)
        anchors.verticalCenter: exportToggle.verticalCenter
    }

    Row {
        id: calendarPair

        readonly property real leftX: exportToggle.x + exportToggle.width + form.gap + 4

        x: form.isWide ? leftX : form.width - form.pad - width
        y: exportToggle.y
        spacing: 8
        visible: form.fields.isExportRequested && !noService.visible

        AppText {
            anchors.verticalCenter: parent.verticalCenter
            text: Language.text("日历标签", "Calendar")
            token: Theme.control
            color: Theme.textSecondary
            Accessible.ignored: true
        }

        AppComboBox {
            width: 164
            name: Language.text("日历标签", "Calendar")
            model: form.fields.calendarTitles
            currentIndex: form.fields.calendarIndex
            onActivated: index => form.fields.calendarIndex = index
        }
    }

    AppTextField {
        id: tagField

        readonly property real freeLeft: calendarPair.visible ? calendarPair.x + calendarPair.width + form.gap : exportToggle.x + exportToggle.width + form.gap

        x: form.isWide ? colorPair.x - form.gap - width : form.pad
        y: form.isWide ? exportToggle.y : exportToggle.y + exportToggle.height + form.gap
        width: form.isWide ? Math.max(120, Math.min(210, colorPair.x - form.gap - freeLeft)) : 210
        placeholderText: Language.text("标签（可选）", "Tag (optional)")
        text: form.fields.tag
        onTextEdited: form.fields.tag = text
        onAccepted: form.addAsUnderstood()
    }

    Row {
        id: colorPair

        x: form.width - form.pad - width
        y: tagField.y
        spacing: 8

        AppText {
            anchors.verticalCenter: parent.verticalCenter
            text: Language.text("颜色", "Color")
            token: Theme.control
            color: Theme.textSecondary
            Accessible.ignored: true
        }

        ColorWell {
            name: Language.text("颜色", "Color")
            hex: form.fields.colorHex
            onEdited: hex => form.fields.colorHex = hex
        }
    }
}
