#pragma once

#include "core/profile_store.h"
#include "tests/files/file_facts.h"
#include "tests/support/temporary_folder.h"
#include "tests/viewmodels/profile_words.h"
#include "viewmodels/profile_list_view_model.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>
#include <string_view>

namespace trellivar {

/// Tells whether a file has been replaced or written.
struct FileVersion {
  explicit FileVersion(const std::filesystem::path& path) {
    struct stat status {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0);
    inode = status.st_ino;
    content = contentOf(path);
  }
  ino_t inode = 0;
  std::string content;
  friend bool operator==(const FileVersion&, const FileVersion&) = default;
};

/// A data folder, and what is reported of it.
struct ProfileFolderTest : testing::Test {
  TemporaryFolder folder;
  ProfileStore store{folder.path()};
  words::Names reports;
  Report report = [this](std::string_view what) { reports.emplace_back(what); };

  /// The profiles after a start of the application.
  words::Profiles start() { return *ProfileListViewModel(store, report).profiles(); }

  words::Profiles backup() const {
    const TemporaryFolder place;
    const ProfileStore reader(place.path());
    std::filesystem::copy_file(store.legacyBackupFile(), reader.profilesFile());
    return reader.load();
  }
};

} // namespace trellivar
