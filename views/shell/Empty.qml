import Tessaly.Ui

/// The line that stands where there is nothing yet.
AppText {
    token: Theme.body
    isMultiline: true
    color: Theme.textSecondary
}
