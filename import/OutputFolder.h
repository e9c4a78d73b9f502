#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>

/// A folder whose new files appear all at once or not at all: they are made in a folder within it, and what did not
/// exist before goes again when they are not published.
class OutputFolder
{
public:
    OutputFolder() = default;
    ~OutputFolder();
    OutputFolder(const OutputFolder &) = delete;
    OutputFolder &operator=(const OutputFolder &) = delete;

    /// Makes the folder when it is missing. False, with one sentence, when that cannot be done.
    [[nodiscard]] bool open(const QString &path, QString *error);
    /// Where to write the file that will be called `name`.
    QString pathOf(const QString &name) const;
    /// Puts the files in their places, over those that stand there. False, with one sentence, when one cannot be; the
    /// folder is as it was then.
    [[nodiscard]] bool publish(const QStringList &names, QString *error);

private:
    QString target(const QString &name) const;
    QString aside(const QString &name) const;
    bool replace(const QString &name) const;
    void restore(const QString &name) const;
    bool refuse(const QString &name, QString *error) const;

    QString m_path;
    QStringList m_made; ///< folders that did not exist, the innermost first
    std::unique_ptr<QTemporaryDir> m_scratch;
    bool m_isPublished = false;
};
