#include "job/folder/job_folder.h"

#include <gmock/gmock.h>

#include <fstream>

#include "job/folder/collection_store.h"
#include "job/folder/files.h"
#include "job/folder/folder_lock.h"
#include "job/job_error.h"
#include "support/run_fixture.h"

namespace varnolix::job {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;

class JobFolderTest : public varnolix::testing::FolderTest {
  protected:
    JobFolderTest() : home(folder() + "it's home"), job(folder() + "job") {
        fs::create_directories(home / "tools" / "job_folder");
        fs::create_directories(home / "tools" / "weblogo-3.4");
        writeFile(home / "tools" / "prince.php", "<?php\n");
        writeFile(home / "tools" / "prince-calls-may-overlap", "yes\n");
        writeFile(home / "tools" / "job_folder" / "run", "home=@home@\nprogram=@program@\npackages=@packages@\n");
        installation = {home, home / "varnolix", home / "tools" / "weblogo-3.4", home / "packages", false, {}};
    }

    fs::path home;
    fs::path job;
    Installation installation;
};

TEST_F(JobFolderTest, StartScriptNamesTheInstallation) {
    const std::string quoted = "'" + folder() + "it'\\''s home";
    EXPECT_EQ(runScript(installation),
              "home=" + quoted + "'\nprogram=" + quoted + "/varnolix'\npackages=" + quoted + "/packages'\n");
}

TEST_F(JobFolderTest, HasWhatTheStagesNeed) {
    const fs::path made = makeJobFolder(job, installation);
    EXPECT_EQ(made, fs::canonical(job));
    for (const char* name : {"motifs", "result", "databases/jaspar", "motifs/weblogo-3.4"}) {
        EXPECT_TRUE(fs::is_directory(job / name)) << name;
    }
    EXPECT_EQ(readFile(job / "prince.php"), "<?php\n");
    EXPECT_EQ(readFile(job / "prince-calls-may-overlap"), "yes\n");
}

TEST_F(JobFolderTest, CollectionsAreLinkedAndCounted) {
    const Collection& collection = collectionNamed("jasparFungi");
    installCollection(home, collection, {{"M1", "", "", {{"1", "0", "0", "0"}}, "", 1}});
    makeJobFolder(job, installation);
    EXPECT_TRUE(fs::is_symlink(collectionFile(job, collection)));
    EXPECT_THAT(describeJobFolder(job), HasSubstr("     2  jasparFungi          1 motif\n"));
    EXPECT_THAT(describeJobFolder(job), HasSubstr("     8  transfac             not installed\n"));
}

TEST_F(JobFolderTest, NearestCollectionWins) {
    const Collection& fungi = collectionNamed("jasparFungi");
    const Collection& plants = collectionNamed("jasparPlants");
    installation.userData = fs::path(folder()) / "user";
    for (const Collection* collection : {&fungi, &plants}) {
        installCollection(home, *collection, {{"S1", "", "", {{"1", "0", "0", "0"}}, "", 1}});
    }
    makeJobFolder(job, installation);
    EXPECT_EQ(fs::read_symlink(collectionFile(job, fungi)), collectionFile(home, fungi));

    installCollection(installation.userData, fungi, {{"U1", "", "", {{"0", "1", "0", "0"}}, "", 1}});
    makeJobFolder(job, installation);
    EXPECT_EQ(fs::read_symlink(collectionFile(job, fungi)), collectionFile(installation.userData, fungi));
    EXPECT_EQ(fs::read_symlink(collectionFile(job, plants)), collectionFile(home, plants));

    installCollection(job, fungi, {{"J1", "", "", {{"0", "0", "1", "0"}}, "", 1}});
    makeJobFolder(job, installation);
    EXPECT_FALSE(fs::is_symlink(collectionFile(job, fungi)));
    EXPECT_THAT(readFile(collectionFile(job, fungi)), HasSubstr(">J1"));
    // The link was replaced, not what it led to.
    EXPECT_THAT(readFile(collectionFile(installation.userData, fungi)), HasSubstr(">U1"));

    const std::string table = collectionTable(collectionPlaces(installation));
    const fs::path file = collectionFile(installation.userData, fungi);
    EXPECT_THAT(table, HasSubstr("     2  jasparFungi          1 motif, user: " + file.string() + "\n"));
    EXPECT_THAT(table, HasSubstr("     5  jasparPlants         1 motif, system: " + home.string() + "/databases/"));
    EXPECT_THAT(table, HasSubstr("     8  transfac             not installed\n"));
}

TEST_F(JobFolderTest, CollectionThatIsNowhereHasNoFile) {
    const Collection& fungi = collectionNamed("jasparFungi");
    EXPECT_EQ(nearestPlace(collectionPlaces(installation), fungi), nullptr);
    EXPECT_EQ(nearestFile(collectionPlaces(installation), fungi), fs::path());
    // A folder of that name is no collection.
    fs::create_directories(collectionFile(home, fungi));
    EXPECT_EQ(nearestFile(collectionPlaces(installation), fungi), fs::path());
}

TEST_F(JobFolderTest, CommonCollectionsGoIntoTheProjectOrToTheUser) {
    installation.userData = fs::path(folder()) / "user";
    EXPECT_EQ(commonCollections(installation), installation.userData);
    installation.isBuildTree = true;
    EXPECT_EQ(commonCollections(installation), home);
    installation.home = home / "absent";
    EXPECT_EQ(commonCollections(installation), installation.userData);
    installation.userData.clear();
    EXPECT_THROW(commonCollections(installation), JobError);
}

TEST_F(JobFolderTest, CollectionOfUnnamedMotifsKeepsThemApart) {
    // The stages tell reference motifs apart by their names.
    const Collection& collection = collectionNamed("jasparAll");
    const NumberColumn column{"1", "0", "0", "0"};
    installCollection(home, collection, {{"M1", "", "", {column}, "", 1}, {"M2", "", "", {column}, "", 2}});
    const std::string text = readFile(collectionFile(home, collection));
    EXPECT_THAT(text, HasSubstr(">M1 M1\n"));
    EXPECT_THAT(text, HasSubstr(">M2 M2\n"));
}

TEST_F(JobFolderTest, UnknownCollectionIsRefusedWithAllNames) {
    try {
        collectionNamed("jaspar");
        FAIL();
    } catch (const JobError& error) {
        EXPECT_THAT(error.what(), HasSubstr("no collection is named jaspar"));
        EXPECT_THAT(error.what(), HasSubstr("uniprobeYeast"));
    }
}

TEST_F(JobFolderTest, OnlyAJobIsEverEmptied) {
    claimFolder(job, false);
    fs::create_directories(job);
    claimFolder(job, false);
    makeJobFolder(job, installation);
    writeFile(job / "matches.tsv", "old\n");
    EXPECT_THROW(claimFolder(job, false), JobError);
    claimFolder(job, true);
    EXPECT_TRUE(fs::is_empty(job));
    writeFile(job / "mine.txt", "mine\n");
    EXPECT_THROW(claimFolder(job, true), JobError);
    EXPECT_EQ(readFile(job / "mine.txt"), "mine\n");
    EXPECT_THROW(claimFolder(job / "mine.txt", true), JobError);
}

TEST_F(JobFolderTest, JobThatWasKilledAnywhereMayBeReplaced) {
    // The folder as it is at each moment of being made or emptied: entries come and go one at a time, `run` first and
    // last.
    writeFile(home / "tools" / "job_folder" / "run", readFile(VARNOLIX_PROJECT "/tools/job_folder/run"));
    fs::create_directories(job);
    std::ofstream(job / "run.new") << "#!";
    claimFolder(job, true);
    EXPECT_TRUE(fs::is_empty(job));
    for (const char* lost : {"motifs", "result", "databases", "prince.php"}) {
        makeJobFolder(job, installation);
        fs::remove_all(job / lost);
        EXPECT_THROW(claimFolder(job, false), JobError);
        claimFolder(job, true);
        EXPECT_TRUE(fs::is_empty(job)) << lost;
    }
    // Somebody's folder with a script of the same name is no job.
    fs::create_directories(job / "motifs");
    std::ofstream(job / "run") << "#!/bin/sh\n";
    EXPECT_THROW(claimFolder(job, true), JobError);
    EXPECT_TRUE(fs::exists(job / "run"));
}

TEST_F(JobFolderTest, LockIsOneProcessesAndLeavesNothing) {
    {
        const FolderLock lock(job);
        // A lock belongs to what opened the folder, so a second one is refused in the same process, too.
        EXPECT_THROW(FolderLock{job}, JobError);
        EXPECT_TRUE(fs::is_empty(job));
    }
    const FolderLock again(job);
    writeFile(job / "file", "text");
    EXPECT_THROW(FolderLock{job / "file"}, JobError);
    EXPECT_THROW(FolderLock{"/proc/no/such"}, JobError);
}

TEST_F(JobFolderTest, FileIsWrittenWholeOrNotAtAll) {
    EXPECT_THROW(writeFile(fs::path(folder()) / "absent" / "file", "text"), JobError);
    EXPECT_THROW(readFile(fs::path(folder()) / "absent"), JobError);
    writeFile(fs::path(folder()) / "file", "text");
    EXPECT_EQ(read("file"), "text");
    EXPECT_FALSE(fs::exists(folder() + "file.new"));
}

}  // namespace
}  // namespace varnolix::job
