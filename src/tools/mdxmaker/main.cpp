// mdxmaker — writes the empty template databases (Mdx folder) from the table declarations.
#include "catalog/templates.h"

#include <cstdio>
#include <exception>

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "Kullanım: mdxmaker KLASÖR\n");
        return 2;
    }
    try {
        for (const QString& name : orvan::writeTemplates(QString::fromLocal8Bit(argv[1])))
            std::printf("%s\n", name.toUtf8().constData());
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "mdxmaker: %s\n", error.what());
        return 1;
    }
}
