#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Finished pictures, kept in the user's cache folder from job to job.
//
// An entry is the whole key, the picture, and a checksum of both, in a file named by the hash of the key. It is taken
// only if all of it is as it should be: neither damage nor two keys of one hash ever show a wrong picture. Entries
// lie in 64 sub-folders, each of which may hold a 64th of what the store may take; only the one that got a new
// entry is looked through, so the bound always holds and costs little. The time of an entry is that of its last use.
//
// Tested by tests/unit/logo_client/picture_store_test.cpp and tests/tools/test_logo_store.py.

namespace varnolix::logos {

/// A store that can be used.
struct PictureStore {
    std::string folder;   ///< for nobody but the user
    std::uint64_t limit;  ///< bytes on the disk
};

/// The store that the environment tells of, its folder made where it is missing. Nothing where it is turned off, or has
/// no folder that belongs to this user alone.
std::optional<PictureStore> openStore();

/// Everything that a picture depends on, as one text.
std::string pictureKey(const std::string& tools, const std::vector<std::string>& environment,
                       const std::vector<std::string>& options, std::string_view matrix);

/// The picture that is kept under the key; nothing where there is none, or a damaged one.
std::optional<std::string> storedPicture(const PictureStore& store, const std::string& key);

/// Keeps a picture, in place of one that is there, and lets go of those that were not used for longest. Where
/// that cannot be done nothing is kept.
void keepPicture(const PictureStore& store, const std::string& key, const std::string& picture);

/// The file that a picture is kept in.
std::string entryPath(const PictureStore& store, const std::string& key);

}  // namespace varnolix::logos
