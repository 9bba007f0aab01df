#pragma once

#include <QString>

namespace oVELDRA::core {
struct SharedState;
} // namespace oVELDRA::core

namespace oVELDRA::declarations {

/// Where the import says how far it is.
class ImportProgress
{
public:
    ImportProgress() = default;
    ImportProgress(const ImportProgress&) = delete;
    ImportProgress& operator=(const ImportProgress&) = delete;
    virtual ~ImportProgress() = default;

    /// The scale, before the first item. Not called for a declaration without items.
    virtual void limits(int minimum, int maximum) = 0;
    /// One more item is done.
    virtual void advance() = 0;
};

/// Whether the host's declaration (`sInternoExt`) may be taken into the stock under a declaration number: "OK …", or
/// "ER ERROR number - description". Never throws.
[[nodiscard]] QString _VerificarIntegridadInterno(core::SharedState& state, const QString& declaration);

/// Takes a declaration of the host into the stock of inputs: its header and one row per subitem with its unit CIF.
///
/// "OK", or a text that begins with "ER"; after an "ER" the header and rows of the declaration are deleted again. Texts
/// that no statement could hold (with an apostrophe) are refused before anything is written or deleted. Dates that are
/// dates are written as "dd/mm/yyyy", others as they are, for the database to refuse. `available` goes to the header
/// as it is. Never throws.
[[nodiscard]] QString ImportarInterno(core::SharedState& state, ImportProgress& progress, const QString& interno,
                                      const QString& declaration, const QString& officialDate,
                                      const QString& description, const QString& expiry, const QString& customsOffice,
                                      qint16 available, bool adjustments);

/// The status text of an error.
[[nodiscard]] QString errorStatus(int number, const QString& description);

} // namespace oVELDRA::declarations
