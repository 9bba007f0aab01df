#pragma once

namespace client {

/// Each checks one promise of the component to programs that are built against its type library, and ends the program
/// with exit code 1 when it is not kept.

void checkSlots();
void checkTypeInformation();
void checkIdentity();
void checkErrors();
void checkApartments();
void checkManyThreads();
void checkUnloading();
void checkModality();
void checkAwareness();
/// Reports what the process holds after some rounds of an object's life, and after so many more.
void countRounds(int rounds);

} // namespace client
