import Tessaly.Ui

/// A multi-line text box with a placeholder, at least `minHeight` high. A press anywhere in it focuses it.
MultilineBase {
}
