import Tessaly.Ui

/// Stands for a screen that is not there yet, and says so.
Page {
    Empty {
        width: parent?.width ?? 0
        text: Language.text("此页面尚未完成。", "This screen is not finished yet.")
    }
}
