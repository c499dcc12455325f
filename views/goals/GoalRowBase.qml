import QtQuick
import Tessaly.Goals

/// The data and signals of a row of a goal's card.
Item {
    required property int index
    required property int part
    required property string itemId
    required property string title
    required property real weight
    required property string weightText
    required property bool isComplete
    required property bool isEditing
    required property GoalCardModel card
    /// How far the page has scrolled since the row began to be dragged.
    property real scrolledBy: 0

    signal deleteRequested
    signal dragStarted
    /// `y` is the pointer's place in the row.
    signal draggedTo(real y)
    signal dragEnded(bool isCancelled)
    signal movedByKey
}
