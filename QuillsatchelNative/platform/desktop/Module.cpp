#include "platform/desktop/Module.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QLibrary>

Module::AnyFunction Module::findMake(const char *name)
{
    // Test programs and benchmarks lie in folders below the program's.
    for (const auto *const folder : { "/modules/", "/../modules/" }) {
        const QString path = QCoreApplication::applicationDirPath() + QLatin1String(folder) +
                             QLatin1String(name) + QStringLiteral(".so");
        if (QFileInfo::exists(path))
            return QLibrary::resolve(path, "make");
    }
    return nullptr;
}
