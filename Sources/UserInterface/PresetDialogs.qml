import QtQuick
import QtQuick.Dialogs
import Tavro

// Where presets are saved to and loaded from, and what went wrong with that.
Item {
    id: root

    required property PresetPresenter presets

    function load() {
        loadDialog.currentFolder = root.presets.folder()
        loadDialog.open()
    }

    function save() {
        saveDialog.currentFolder = root.presets.folder()
        saveDialog.selectedFile = root.presets.suggestedFile()
        saveDialog.open()
    }

    FileDialog {
        id: loadDialog

        title: qsTr("Load TAVRO Preset")
        fileMode: FileDialog.OpenFile
        nameFilters: [root.presets.nameFilter]
        onAccepted: root.presets.openFile(selectedFile)
    }

    FileDialog {
        id: saveDialog

        title: qsTr("Save TAVRO Preset")
        fileMode: FileDialog.SaveFile
        nameFilters: [root.presets.nameFilter]
        defaultSuffix: root.presets.fileExtension
        acceptLabel: qsTr("Save")
        onAccepted: root.presets.saveFile(selectedFile)
    }

    AlertSheet {
        id: alert
    }

    Connections {
        function onFailed(title, text) {
            alert.title = title
            alert.text = text
            alert.open()
        }

        target: root.presets
    }
}
