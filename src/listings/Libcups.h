#pragma once

#include <cups/cups.h>

namespace oVELDRA::listings {

/// The functions of CUPS that the print queues use, under their own names.
///
/// They are loaded with the first listing that is printed in text mode: the library comes with those of encryption and
/// of the network's directory, and no start needs them.
struct Libcups
{
    decltype(&::cupsCancelJob2) cupsCancelJob2;
    decltype(&::cupsCreateJob) cupsCreateJob;
    decltype(&::cupsEncryption) cupsEncryption;
    decltype(&::cupsFinishDocument) cupsFinishDocument;
    decltype(&::cupsFreeDests) cupsFreeDests;
    decltype(&::cupsGetNamedDest) cupsGetNamedDest;
    decltype(&::cupsGetOption) cupsGetOption;
    decltype(&::cupsLastError) cupsLastError;
    decltype(&::cupsLastErrorString) cupsLastErrorString;
    decltype(&::cupsServer) cupsServer;
    decltype(&::cupsStartDocument) cupsStartDocument;
    decltype(&::cupsWriteRequestData) cupsWriteRequestData;
    decltype(&::httpClose) httpClose;
    decltype(&::httpConnect2) httpConnect2;
    decltype(&::ippPort) ippPort;
};

/// Loads them at the first call. Throws RuntimeError 53 when CUPS is not installed.
[[nodiscard]] const Libcups& libcups();

} // namespace oVELDRA::listings
