pragma Singleton

import QtQuick

/// Where the window's toast stands: over the open sheet that wants it, because nothing beneath a sheet can be reached.
QtObject {
    /// The sheet's surface, or null for the window's own place.
    property Item surface: null
    /// Height of what must stay free at the lower edge of the surface.
    property real foot: 0
    /// Height of the room that a scrolling area beneath the toast needs to show its end; 0 without a toast to be used.
    property real room: 0
}
