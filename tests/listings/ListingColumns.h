#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>

namespace oVELDRA::listings {

using namespace Qt::StringLiterals;

/// The columns of `DIP` that the listing reads.
inline const QStringList listingColumns{u"EXTNOF"_s, u"ARTNRO"_s, u"RIPCAN"_s, u"PRDMUL"_s, u"DIPCAN"_s, u"RIPMER"_s,
                                        u"TRPMER"_s, u"RIPPER"_s, u"TRPPER"_s, u"ARTPRE"_s, u"RALCAN"_s, u"EXTFAC"_s};

/// A row of them; waste and loss with their flags are the test's.
inline QVariantList listingRow(const QVariant& exported = 1000.0, const QVariant& waste = 2.5,
                               const QVariant& wasteFlag = 0, const QVariant& loss = 1.25,
                               const QVariant& lossFlag = -1)
{
    return {u"26001EC01004521K"_s,
            u"CUE-VAC-FL14"_s,
            0.28,
            1.0,
            exported,
            waste,
            wasteFlag,
            loss,
            lossFlag,
            21.1234567,
            672.005,
            u"0003-1245"_s};
}

} // namespace oVELDRA::listings
