// A host that knows the component by its type library alone. Prints a line for everything that it checks.

#include "Checking.h"
#include "Commands.h"

#include <cstdlib>
#include <map>
#include <string>
#include <string_view>

int main(int count, char** arguments)
{
    const std::map<std::string_view, void (*)()> commands{
        {"slots", client::checkSlots},           {"types", client::checkTypeInformation},
        {"identity", client::checkIdentity},     {"errors", client::checkErrors},
        {"apartments", client::checkApartments}, {"threads", client::checkManyThreads},
        {"unload", client::checkUnloading},      {"awareness", client::checkAwareness},
        {"modality", client::checkModality},
    };
    const std::string_view wanted = count > 1 ? arguments[1] : "";
    if (wanted == "rounds" && count == 3) {
        client::countRounds(std::atoi(arguments[2]));
    } else if (const auto command = commands.find(wanted); command != commands.end() && count == 2) {
        command->second();
    } else {
        client::check(false, "usage: slots | types | identity | errors | apartments | threads | unload | rounds N | "
                             "awareness | modality");
    }
    client::report("finished", L"yes");
    return 0;
}
