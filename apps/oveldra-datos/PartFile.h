#pragma once

#include <QString>

namespace oVELDRA::data {

/// What becomes of a file that is there already.
enum class ExistingFile : quint8 { Keep, Replace };

/// A file that is written under a name of its own beside its target, and takes the target's name when it is whole. What
/// is left of it when this goes out of scope is removed.
class PartFile
{
public:
    /// Throws RuntimeError when the target's folder is not there, when the target is there and shall be kept, and when
    /// it shall be replaced but is a database in use.
    PartFile(QString target, ExistingFile existing);
    PartFile(const PartFile&) = delete;
    PartFile& operator=(const PartFile&) = delete;
    ~PartFile();

    /// Where to write.
    [[nodiscard]] const QString& path() const { return m_path; }

    /// Gives it the target's name, in one step. A database in it must be closed. Throws RuntimeError; what the target
    /// was before, it then still is.
    void complete();

private:
    void checkTarget() const;
    void clear() const;

    QString m_target;
    ExistingFile m_existing;
    QString m_path;
};

} // namespace oVELDRA::data
