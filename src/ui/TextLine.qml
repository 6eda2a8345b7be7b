// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick

/// One line of text, cut at its end. It keeps its place whatever script it holds: Chinese fonts are
/// taller than Latin ones.
Item {
    id: line

    required property string text
    required property int size
    required property color color
    property int weight: Font.Normal
    /// Where it has to be one font in place of the interface's.
    property string family: ""
    property int alignment: Text.AlignLeft
    property string markup: "" ///< StyledText to show in place of the text

    implicitWidth: Math.ceil(words.implicitWidth)
    height: Math.round(line.size * Units.cardLine)

    Text {
        id: words

        y: Math.round(line.height * 0.76) - Math.round(words.baselineOffset)
        width: line.width
        text: line.markup.length > 0 ? line.markup : line.text
        textFormat: line.markup.length > 0 ? Text.StyledText : Text.PlainText
        horizontalAlignment: line.alignment
        elide: Text.ElideRight
        maximumLineCount: 1
        color: line.color
        font.pixelSize: line.size
        font.weight: line.weight
    }
    Binding {
        target: words
        property: "font.family"
        value: line.family !== "" ? line.family : Units.chineseFamily
        when: line.family !== "" || Units.hasChineseQuotes(line.text)
    }
}
