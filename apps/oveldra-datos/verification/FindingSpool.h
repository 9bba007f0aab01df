#pragma once

#include "Finding.h"

#include <QTemporaryFile>

#include <array>
#include <memory>

namespace oVELDRA::data {

/// Keeps findings in temporary files, one a kind, however many there are. Whatever cannot be written or read throws
/// RuntimeError 57.
class FindingSpool final : public FindingSink
{
public:
    FindingSpool();
    ~FindingSpool() override;

    void add(const Finding& finding) override;

    /// A run of findings of a kind that were added one behind the other.
    struct Range
    {
        qint64 begin = 0; ///< places as place() gave them
        qint64 end = 0;
        qint64 findings = 0;
    };

    /// Where the next finding of a kind will go.
    [[nodiscard]] Range place(FindingKind kind) const;
    /// The findings of a kind that were added since place() was asked.
    [[nodiscard]] Range since(FindingKind kind, const Range& place) const;

    /// Leaves findings out of the count and of forEach().
    void leaveOut(FindingKind kind, const Range& range);

    [[nodiscard]] qint64 count(FindingKind kind) const;
    void forEach(FindingKind kind, const std::function<void(const Finding&)>& body);

    /// Reads a range, finding by finding. One reader of a kind at a time; no adding meanwhile.
    class Reader
    {
    public:
        Reader(FindingSpool& spool, FindingKind kind, const Range& range);
        [[nodiscard]] bool next(Finding& finding);

    private:
        QTemporaryFile* m_file;
        FindingKind m_kind;
        qint64 m_end;
    };

private:
    struct File
    {
        std::unique_ptr<QTemporaryFile> file; ///< made for the first finding
        qint64 size = 0;
        qint64 findings = 0;
        std::vector<Range> leftOut; ///< in order
    };

    [[nodiscard]] File& fileOf(FindingKind kind) { return m_files[static_cast<size_t>(kind)]; }
    [[nodiscard]] const File& fileOf(FindingKind kind) const { return m_files[static_cast<size_t>(kind)]; }

    std::array<File, findingKinds> m_files;
};

} // namespace oVELDRA::data
