#include "platform/desktop/Module.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QLibrary>

QString Module::file(const QString &programFolder, const char *name)
{
    // Where they are installed, and where they are built. Test programs and benchmarks lie in
    // folders below the program's.
    for (const auto *const folder : { "/" QUILLSATCHEL_MODULES "/", "/modules/", "/../modules/" }) {
        QString path =
            programFolder + QLatin1String(folder) + QLatin1String(name) + QStringLiteral(".so");
        if (QFileInfo::exists(path))
            return path;
    }
    return {};
}

Module::AnyFunction Module::findMake(const char *name)
{
    const QString path = file(QCoreApplication::applicationDirPath(), name);
    return path.isEmpty() ? nullptr : QLibrary::resolve(path, "make");
}
