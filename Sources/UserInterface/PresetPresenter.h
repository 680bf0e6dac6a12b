#pragma once

#include "Presets/PresetLibrary.h"

#include <QObject>
#include <QString>
#include <QUrl>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

namespace tavro {

/// What the window shows of the presets, and what it can ask for. Follows the library.
class PresetPresenter : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    /// Entries of "text" and "value": the presets by name, tagged by their identifiers.
    Q_PROPERTY(QVariantList presets READ presets NOTIFY presetsChanged)
    /// The identifier of the chosen one. Writing another one loads it.
    Q_PROPERTY(QString selected READ selected WRITE select NOTIFY selectedChanged)
    Q_PROPERTY(QString nameFilter READ nameFilter CONSTANT)
    Q_PROPERTY(QString fileExtension READ fileExtension CONSTANT)

public:
    /// Must outlive this.
    explicit PresetPresenter(PresetLibrary& library);

    [[nodiscard]] QVariantList presets() const;
    [[nodiscard]] QString selected() const;
    void select(const QString& id);
    [[nodiscard]] static QString nameFilter();
    [[nodiscard]] static QString fileExtension();

    /// Where file dialogs start. It is made when it is not there.
    Q_INVOKABLE static QUrl folder();

    /// What a save dialog proposes.
    Q_INVOKABLE QUrl suggestedFile() const;

    /// Loads the preset of a file. A failure is told by `failed`, and changes nothing. Other than files of
    /// this computer fail too.
    Q_INVOKABLE void openFile(const QUrl& file);

    /// Saves the settings as a new preset that is named like the file.
    Q_INVOKABLE void saveFile(const QUrl& file);

Q_SIGNALS:
    void presetsChanged();
    void selectedChanged();
    /// For an alert. The text is plain, and names the file and the reason.
    void failed(const QString& title, const QString& text);

private:
    PresetLibrary& library_;
};

} // namespace tavro
