#include "platform/desktop/Module.h"

#include "fakes/TestFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <filesystem>

namespace
{

class ModuleTest : public testing::Test
{
protected:
    /// As a path from the root of the installation or build.
    void addFile(const char *path)
    {
        TestFiles::write(std::filesystem::path(m_root.path().toStdString()) / path, "");
    }

    /// As a path from that root, too.
    QString found(const char *programFolder, const char *name) const
    {
        const QDir root(m_root.path());
        const QString file = Module::file(root.filePath(QLatin1String(programFolder)), name);
        return file.isEmpty() ? file : root.relativeFilePath(QDir::cleanPath(file));
    }

private:
    QTemporaryDir m_root;
};

TEST_F(ModuleTest, IsFoundWhereItIsInstalled)
{
    addFile("bin/quillsatchel");
    addFile(INSTALLED_MODULES "/network.so");
    EXPECT_EQ(found("bin", "network"), QStringLiteral(INSTALLED_MODULES "/network.so"));
}

TEST_F(ModuleTest, IsFoundWhereItIsBuiltFromTheProgramAndFromFoldersBelow)
{
    addFile("modules/speech.so");
    addFile("tests/SomeTest");
    EXPECT_EQ(found("", "speech"), QStringLiteral("modules/speech.so"));
    EXPECT_EQ(found("tests", "speech"), QStringLiteral("modules/speech.so"));
}

TEST_F(ModuleTest, IsTheInstalledOneOfAnInstalledProgram)
{
    addFile("modules/network.so");
    addFile("bin/modules/network.so");
    addFile(INSTALLED_MODULES "/network.so");
    EXPECT_EQ(found("bin", "network"), QStringLiteral(INSTALLED_MODULES "/network.so"));
}

TEST_F(ModuleTest, IsNotFoundInAnIncompleteInstallation)
{
    addFile(INSTALLED_MODULES "/network.so");
    EXPECT_EQ(found("bin", "speech"), QString());
}

} // namespace
