#include "platform/desktop/Module.h"

#include "fakes/TestFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

class ModuleTest : public testing::Test
{
protected:
    ModuleTest() { umask(S_IWGRP | S_IWOTH); }

    ~ModuleTest() override { umask(m_formerMask); }

    std::filesystem::path path(const char *inRoot) const
    {
        return std::filesystem::path(m_root.path().toStdString()) / inRoot;
    }

    /// `name` is relative to the root of the installation or build.
    void addFile(const char *name) { TestFiles::write(path(name), ""); }

    /// Relative to that root, too.
    QString found(const char *programFolder, const char *name) const
    {
        const QDir root(m_root.path());
        const QString file = Module::file(root.filePath(QLatin1String(programFolder)), name);
        return file.isEmpty() ? file : root.relativeFilePath(QDir::cleanPath(file));
    }

private:
    QTemporaryDir m_root;
    mode_t m_formerMask = umask(0);
};

TEST_F(ModuleTest, FindsTheInstalledModule)
{
    addFile("bin/quillsatchel");
    addFile(INSTALLED_MODULES "/network.so");
    EXPECT_EQ(found("bin", "network"), QStringLiteral(INSTALLED_MODULES "/network.so"));
}

TEST_F(ModuleTest, FindsTheModulesOfABuildFolder)
{
    addFile("CMakeCache.txt");
    addFile("modules/speech.so");
    addFile("tests/SomeTest");
    EXPECT_EQ(found("", "speech"), QStringLiteral("modules/speech.so"));
    EXPECT_EQ(found("tests", "speech"), QStringLiteral("modules/speech.so"));
}

TEST_F(ModuleTest, UsesNoInstalledModuleInABuildFolder)
{
    addFile("build/CMakeCache.txt");
    addFile("build/quillsatchel");
    addFile(INSTALLED_MODULES "/network.so");
    EXPECT_EQ(found("build", "network"), QString());
}

TEST_F(ModuleTest, FindsNoModuleBesideACopiedProgram)
{
    addFile("modules/network.so");
    addFile("copy/quillsatchel");
    addFile("copy/modules/network.so");
    EXPECT_EQ(found("copy", "network"), QString());
}

TEST_F(ModuleTest, UsesOnlyTheInstalledModuleOnceInstalled)
{
    addFile("modules/network.so");
    addFile("bin/modules/network.so");
    addFile(INSTALLED_MODULES "/network.so");
    EXPECT_EQ(found("bin", "network"), QStringLiteral(INSTALLED_MODULES "/network.so"));
}

TEST_F(ModuleTest, RejectsAFileOrFolderThatOthersCanWrite)
{
    addFile("bin/quillsatchel");
    addFile(INSTALLED_MODULES "/network.so");
    for (const auto *const each : { INSTALLED_MODULES, INSTALLED_MODULES "/network.so" }) {
        const auto mode = TestFiles::mode(path(each));
        for (const auto writable : { 0020U, 0002U }) {
            TestFiles::setMode(path(each), mode | writable);
            EXPECT_EQ(found("bin", "network"), QString()) << each;
        }
        TestFiles::setMode(path(each), mode);
        EXPECT_EQ(found("bin", "network"), QStringLiteral(INSTALLED_MODULES "/network.so"));
    }
}

TEST_F(ModuleTest, RejectsAFileOrFolderOfAnotherUser)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "Only root can give files away.";
    addFile("bin/quillsatchel");
    addFile(INSTALLED_MODULES "/network.so");
    for (const auto *const each : { INSTALLED_MODULES, INSTALLED_MODULES "/network.so" }) {
        ASSERT_EQ(chown(path(each).c_str(), 65534, 65534), 0);
        EXPECT_EQ(found("bin", "network"), QString()) << each;
        ASSERT_EQ(chown(path(each).c_str(), 0, 0), 0);
        EXPECT_NE(found("bin", "network"), QString()) << each;
    }
}

TEST_F(ModuleTest, FindsNoModuleInAnIncompleteInstallation)
{
    addFile(INSTALLED_MODULES "/network.so");
    EXPECT_EQ(found("bin", "speech"), QString());
}

} // namespace
