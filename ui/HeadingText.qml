import QtQuick

/// A section's heading.
AppText {
    token: Theme.heading
    Accessible.role: Accessible.Heading
}
