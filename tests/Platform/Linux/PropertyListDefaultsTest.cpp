#include "Platform/Linux/PropertyListDefaults.h"

#include "tests/Platform/Linux/ManualLoop.h"
#include "tests/Platform/Linux/TemporaryDirectory.h"
#include "tests/Ports/DefaultsContract.h"

#include <algorithm>
#include <chrono>
#include <clocale>
#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace korvane::platform {
namespace {

class FileHarness final : public DefaultsHarness {
public:
    FileHarness() { open(); }

    Defaults &defaults() override { return *database; }
    void reopen() override
    {
        database.reset();
        open();
    }

    void open()
    {
        database = std::make_unique<PropertyListDefaults>(loop, file,
                                                          [this](const std::string &line) { reports.push_back(line); });
    }
    std::vector<std::filesystem::path> neighbours() const
    {
        std::vector<std::filesystem::path> names;
        for (const auto &entry : std::filesystem::directory_iterator(file.parent_path()))
            if (entry.path() != file)
                names.push_back(entry.path());
        return names;
    }

    TemporaryDirectory directory;
    std::filesystem::path file = directory.path() / "config" / "korvane" / "defaults.plist";
    ManualLoop loop;
    std::vector<std::string> reports;
    std::unique_ptr<PropertyListDefaults> database;
};

const std::string head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">";

mode_t permissions(const std::filesystem::path &path)
{
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 ? status.st_mode & 0777 : 0;
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(PropertyList, DefaultsContract, testing::Values([]() -> std::unique_ptr<DefaultsHarness> {
                             return std::make_unique<FileHarness>();
                         }));

TEST(PropertyListDefaults, ReadingAloneMakesNoFile)
{
    FileHarness harness;
    EXPECT_FALSE(harness.database->has("key"));
    harness.loop.turn();
    harness.reopen();
    EXPECT_FALSE(std::filesystem::exists(harness.directory.path() / "config"));
}

TEST(PropertyListDefaults, ATurnOfTheLoopWritesOnceHoweverMuchChanged)
{
    FileHarness harness;
    for (int i = 0; i < 100; ++i)
        harness.database->setInteger("key", i);
    EXPECT_FALSE(std::filesystem::exists(harness.file));
    EXPECT_EQ(harness.loop.posted.size(), 1u);
    harness.loop.turn();
    EXPECT_NE(fileText(harness.file).find("<integer>99</integer>"), std::string::npos);
}

TEST(PropertyListDefaults, AnEqualValueIsNoChange)
{
    FileHarness harness;
    harness.database->setStrings("key", {"a"});
    harness.loop.turn();
    harness.database->setStrings("key", {"a"});
    harness.database->remove("absent");
    EXPECT_TRUE(harness.loop.posted.empty());
}

TEST(PropertyListDefaults, SynchronizeWritesAtOnceAndTheTurnNotAgain)
{
    FileHarness harness;
    harness.database->setBoolean("key", true);
    harness.database->synchronize();
    ASSERT_TRUE(std::filesystem::exists(harness.file));
    std::filesystem::remove(harness.file);
    harness.loop.turn();
    EXPECT_FALSE(std::filesystem::exists(harness.file));
}

TEST(PropertyListDefaults, APostThatComesAfterTheDatabaseIsHarmless)
{
    FileHarness harness;
    harness.database->setBoolean("key", true);
    harness.database.reset();
    harness.loop.turn();
    EXPECT_TRUE(std::filesystem::exists(harness.file));
}

TEST(PropertyListDefaults, OnlyTheOwnerMayRead)
{
    FileHarness harness;
    const mode_t before = ::umask(0);
    harness.database->setBoolean("key", true);
    harness.database->synchronize();
    ::umask(before);
    EXPECT_EQ(permissions(harness.file), 0600u);
    EXPECT_EQ(permissions(harness.file.parent_path()), 0700u);
    ::chmod(harness.file.parent_path().c_str(), 0755);
    ::chmod(harness.file.c_str(), 0644);
    harness.reopen();
    EXPECT_EQ(permissions(harness.file.parent_path()), 0700u);
    harness.database->setBoolean("key", false);
    harness.database->synchronize();
    EXPECT_EQ(permissions(harness.file), 0600u);
}

TEST(PropertyListDefaults, NoTemporaryFileStays)
{
    FileHarness harness;
    harness.database->setBoolean("key", true);
    harness.database->synchronize();
    EXPECT_TRUE(harness.neighbours().empty());
}

TEST(PropertyListDefaults, OldTemporaryFilesOfAKilledProcessAreRemovedAndNothingElse)
{
    FileHarness harness;
    const auto folder = harness.file.parent_path();
    const auto old = std::filesystem::file_time_type::clock::now() - std::chrono::hours(2);
    for (const char *name : {".defaults.plist.aB3dEf", ".defaults.plist.backup-1", "defaults.plist.aB3dEf"}) {
        writeFile(folder / name, "left");
        std::filesystem::last_write_time(folder / name, old);
    }
    writeFile(folder / ".defaults.plist.fresh1", "being written");
    harness.open();
    EXPECT_FALSE(std::filesystem::exists(folder / ".defaults.plist.aB3dEf"));
    EXPECT_EQ(harness.neighbours().size(), 3u);
}

// Reading it would take the library minutes.
TEST(PropertyListDefaults, AFileThatHoldsTooMuchIsSetAsideBeforeItIsRead)
{
    const auto repeated = [](int times, const auto &part) {
        std::string text;
        for (int i = 0; i < times; ++i)
            text += part(i);
        return text;
    };
    const auto key = [](int i) { return "<key>k" + std::to_string(i) + "</key><true/>"; };
    const auto ampersand = [](int) { return std::string("&amp;"); };
    const std::string tail = "</dict></plist>";
    for (const std::string &contents :
         {head + "<dict>" + repeated(650'000, key) + tail,
          head + "<dict><key>a</key><string>" + repeated(2'000'000, ampersand) + "</string>" + tail}) {
        FileHarness harness;
        writeFile(harness.file, contents);
        const auto before = std::chrono::steady_clock::now();
        harness.open();
        EXPECT_LT(std::chrono::steady_clock::now() - before, std::chrono::seconds(2));
        ASSERT_EQ(harness.reports.size(), 1u);
        EXPECT_NE(harness.reports[0].find("too much"), std::string::npos);
        ASSERT_EQ(harness.neighbours().size(), 1u);
        EXPECT_EQ(std::filesystem::file_size(harness.neighbours()[0]), contents.size());
    }
    // What a person has done over years is far from that.
    FileHarness harness;
    writeFile(harness.file, head + "<dict>" + repeated(10'000, key) + "<key>a</key><string>"
                                + repeated(10'000, ampersand) + "</string>" + tail);
    harness.open();
    EXPECT_TRUE(harness.reports.empty());
    EXPECT_EQ(harness.database->string("a"), std::string(10'000, '&'));
}

TEST(PropertyListDefaults, ATornFileIsSetAsideAndReported)
{
    for (const std::string &torn :
         {std::string(), std::string("garbage"), head + "<dict><key>a</key><string>b</st", head + "<dict></dict>",
          head + "<dict><key>a</key><true/></dict>", head + "<array></array></plist>",
          std::string("bplist00\xd1\x01\x02", 11), std::string(5000, '\0')}) {
        FileHarness harness;
        writeFile(harness.file, torn);
        harness.open();
        EXPECT_FALSE(harness.database->has("a"));
        ASSERT_EQ(harness.reports.size(), 1u) << torn;
        ASSERT_EQ(harness.neighbours().size(), 1u);
        EXPECT_EQ(fileText(harness.neighbours()[0]), torn);
        EXPECT_NE(harness.reports[0].find(harness.neighbours()[0].string()), std::string::npos);
        EXPECT_EQ(harness.reports[0].find('\n'), std::string::npos);
        harness.database->setString("a", "new");
        harness.reopen();
        EXPECT_EQ(harness.database->string("a"), "new");
        EXPECT_EQ(harness.reports.size(), 1u);
    }
}

TEST(PropertyListDefaults, SeveralDamagedFilesAreAllKept)
{
    FileHarness harness;
    for (int i = 0; i < 3; ++i) {
        writeFile(harness.file, "garbage " + std::to_string(i));
        harness.open();
    }
    EXPECT_EQ(harness.neighbours().size(), 3u);
}

TEST(PropertyListDefaults, APipeInThePlaceOfTheFileIsNotWaitedFor)
{
    FileHarness harness;
    std::filesystem::create_directories(harness.file.parent_path());
    ASSERT_EQ(::mkfifo(harness.file.c_str(), 0600), 0);
    harness.open();
    EXPECT_EQ(harness.reports.size(), 1u);
    EXPECT_EQ(harness.neighbours().size(), 1u);
}

TEST(PropertyListDefaults, WhereNothingCanBeWrittenItSaysSoOnceAndWorksInMemory)
{
    FileHarness harness;
    writeFile(harness.directory.path() / "config", "a file where a folder should be");
    for (int i = 0; i < 3; ++i) {
        harness.database->setInteger("key", i);
        harness.loop.turn();
    }
    EXPECT_EQ(harness.database->integer("key"), 2);
    ASSERT_EQ(harness.reports.size(), 1u);
    EXPECT_EQ(harness.reports[0].find('\n'), std::string::npos);
    std::filesystem::remove(harness.directory.path() / "config");
    harness.reopen();  // the end of the program tries once more
    EXPECT_EQ(harness.database->integer("key"), 2);
}

TEST(PropertyListDefaults, AFullDiskLeavesTheOldFileWhole)
{
    FileHarness harness;
    harness.database->setString("key", "old");
    harness.database->synchronize();
    const std::string before = fileText(harness.file);
    const pid_t child = ::fork();
    if (child == 0) {
        // The kernel refuses to let the file grow, as a full disk would.
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit none{64, 64};
        ::setrlimit(RLIMIT_FSIZE, &none);
        harness.database->setString("key", std::string(10000, 'x'));
        harness.database->synchronize();
        ::_exit(harness.reports.size() == 1 && harness.neighbours().empty() ? 0 : 1);
    }
    int status = -1;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0) << "no report, or a temporary file stayed";
    EXPECT_EQ(fileText(harness.file), before);
}

TEST(PropertyListDefaults, AProcessKilledWhileItWritesLeavesAWholeFile)
{
    FileHarness harness;
    harness.database->setString("key", "start");
    harness.database->synchronize();
    for (int round = 0; round < 20; ++round) {
        const pid_t child = ::fork();
        if (child == 0) {
            for (int i = 0;; ++i) {
                harness.database->setString("key", std::string(20000, static_cast<char>('a' + i % 26)));
                harness.database->synchronize();
            }
        }
        ::usleep(static_cast<useconds_t>(1000 + round * 700));
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
        harness.open();
        const auto value = harness.database->string("key");
        ASSERT_TRUE(value);
        EXPECT_TRUE(*value == "start" || *value == std::string(20000, value->front()));
        ASSERT_TRUE(harness.reports.empty());
    }
}

TEST(PropertyListDefaults, ALinkedFileStaysALink)
{
    FileHarness harness;
    const auto real = harness.directory.path() / "dotfiles" / "settings.plist";
    writeFile(real, head + "<dict><key>a</key><true/></dict></plist>");
    std::filesystem::create_directories(harness.file.parent_path());
    std::filesystem::create_symlink(real, harness.file);
    harness.open();
    EXPECT_EQ(harness.database->boolean("a"), true);
    harness.database->setBoolean("a", false);
    harness.database->synchronize();
    EXPECT_TRUE(std::filesystem::is_symlink(harness.file));
    EXPECT_NE(fileText(real).find("<false/>"), std::string::npos);
}

TEST(PropertyListDefaults, ValuesThatWeNeverWriteAreKept)
{
    FileHarness harness;
    writeFile(harness.file, head
                                + "<dict><key>when</key><date>2024-05-06T07:08:09Z</date><key>mixed</key><array>"
                                  "<string>a</string><integer>1</integer></array><key>deep</key><dict><key>x</key>"
                                  "<array><true/></array></dict></dict></plist>");
    harness.open();
    EXPECT_TRUE(harness.database->has("when"));
    EXPECT_FALSE(harness.database->strings("mixed"));
    EXPECT_FALSE(harness.database->dictionary("deep"));
    harness.database->setBoolean("other", true);
    harness.reopen();
    const std::string text = fileText(harness.file);
    EXPECT_NE(text.find("2024-05-06T07:08:09Z"), std::string::npos);
    EXPECT_NE(text.find("<integer>1</integer>"), std::string::npos);
    EXPECT_TRUE(harness.database->has("deep"));
}

TEST(PropertyListDefaults, NumbersThatAreNoneAreAbsentAndNotStored)
{
    FileHarness harness;
    writeFile(harness.file, head
                                + "<dict><key>a</key><real>nan</real><key>b</key><real>inf</real>"
                                  "<key>c</key><real>1.5</real></dict></plist>");
    harness.open();
    EXPECT_FALSE(harness.database->number("a"));
    EXPECT_FALSE(harness.database->number("b"));
    EXPECT_EQ(harness.database->number("c"), 1.5);
    harness.database->setNumber("c", std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(harness.database->number("c"), 1.5);
}

TEST(PropertyListDefaults, NestingWithoutEndIsRefused)
{
    FileHarness harness;
    std::string text = head + "<dict><key>a</key>";
    for (int i = 0; i < 200000; ++i)
        text += "<array>";
    for (int i = 0; i < 200000; ++i)
        text += "</array>";
    writeFile(harness.file, text + "</dict></plist>");
    harness.open();
    EXPECT_EQ(harness.reports.size(), 1u);
}

TEST(PropertyListDefaults, ALocaleWithADecimalCommaChangesNothing)
{
    const char *german = std::setlocale(LC_NUMERIC, "de_DE.UTF-8");
    FileHarness harness;
    harness.database->setNumber("key", 0.65);
    harness.reopen();
    EXPECT_EQ(harness.database->number("key"), 0.65);
    EXPECT_NE(fileText(harness.file).find("<real>0.65"), std::string::npos);
    std::setlocale(LC_NUMERIC, "C");
    if (german == nullptr)
        GTEST_SKIP() << "no locale with a decimal comma is installed here";
}

TEST(StorableText, ControlCharactersGoAndBrokenBytesAreMarked)
{
    EXPECT_EQ(storableText("plain ⓚ 👩‍👧 \t\n"), "plain ⓚ 👩‍👧 \t\n");
    EXPECT_EQ(storableText(std::string_view("a\0b\x1b\x7f\r", 6)), "ab");
    EXPECT_EQ(storableText("\xff"), "\xef\xbf\xbd");
    EXPECT_EQ(storableText("\xc3"), "\xef\xbf\xbd");
    EXPECT_EQ(storableText("\xef\xbf\xbf!"), "\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd!");
    EXPECT_EQ(storableText("\xc0\xaf"), "\xef\xbf\xbd\xef\xbf\xbd");
}

}  // namespace korvane::platform
