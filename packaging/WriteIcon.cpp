// Part of the build: writes the program's icon as a file.
// usage: tornel_icon SIZE FILE.png

#include <cstdio>
#include <cstdlib>
#include <tornel/HostIcon.h>

int main(int argc, char* argv[])
{
    bool isNumber = false;
    const int size = argc == 3 ? QByteArray(argv[1]).toInt(&isNumber) : 0;
    if (!isNumber || size <= 0) {
        std::fputs("usage: tornel_icon SIZE FILE.png\n", stderr);
        return EXIT_FAILURE;
    }
    const QString file = QString::fromLocal8Bit(argv[2]);
    if (!tornel::hostPicture(size).save(file)) {
        std::fprintf(stderr, "tornel_icon: cannot write %s\n", argv[2]);
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
