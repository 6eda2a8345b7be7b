// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
import QtQuick
import Vellumo.Panel
import Vellumo.Ui

/// What is to be read, from the selection down to the last follow-up. Its height is right as soon
/// as settle() returns; nothing waits for the next frame.
Item {
    id: body

    required property ResultPanelModel view
    required property BilingualText texts

    readonly property bool isError: body.view.state === ResultPanelModel.Error
    readonly property bool isLoading: body.view.state === ResultPanelModel.Loading

    readonly property real textHeight: body.isError ? errorText.height
                  : thread.visible ? thread.y + thread.height
                  : body.isLoading ? skeleton.y + skeleton.height
                  : answer.y + answer.height

    implicitHeight: actions.visible ? actions.y + actions.height : body.textHeight
    height: body.implicitHeight

    function settle(): void {
        thread.settle()
        actions.settle()
    }
    function deselect(): void {
        answer.deselect()
        errorText.deselect()
    }

    ErrorText {
        id: errorText

        width: parent.width
        visible: body.isError
        view: body.view
        texts: body.texts
    }

    SourceQuote {
        id: quote

        width: parent.width
        visible: !body.isError && body.view.sourceText.length > 0
        height: visible ? implicitHeight : 0
        text: body.view.sourceText
    }

    LoadingLines {
        id: skeleton

        anchors.top: quote.bottom
        anchors.topMargin: quote.visible ? Units.space12 : 0
        width: parent.width
        visible: opacity > 0
        opacity: body.isLoading ? 1 : 0
        running: body.isLoading && body.view.shown

        Behavior on opacity {
            enabled: !body.isLoading && body.view.shown && Units.animated
            NumberAnimation { duration: Units.quick }
        }
    }

    AnswerText {
        id: answer

        anchors.top: sample.visible ? sample.bottom : quote.bottom
        anchors.topMargin: sample.visible || quote.visible ? Units.space12 : 0
        width: parent.width
        visible: !body.isError && !body.isLoading
        opacity: visible ? 1 : 0
        view: body.view

        Behavior on opacity {
            enabled: answer.visible && skeleton.visible && body.view.shown && Units.animated
            NumberAnimation { duration: Units.quick }
        }
    }

    SampleNote {
        id: sample

        anchors.top: quote.bottom
        anchors.topMargin: quote.visible ? Units.space12 : 0
        width: parent.width
        visible: body.view.isSample && !body.isError && !body.isLoading
        view: body.view
        texts: body.texts
    }

    IslandActions {
        id: actions

        y: body.textHeight + Units.space8
        width: parent.width
        view: body.view
        texts: body.texts
        hasService: body.isError && body.view.offersService && !body.view.offersPermission
    }

    FollowUpThread {
        id: thread

        anchors.top: answer.bottom
        anchors.topMargin: Units.space16
        width: parent.width
        visible: thread.count > 0 && !body.isError && !body.isLoading
        view: body.view
        texts: body.texts
    }
}
