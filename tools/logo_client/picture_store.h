#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Stores finished pictures in the user's cache folder, so that later jobs can use them.
//
// An entry consists of the whole key, the picture, and a checksum of both, in a file that is named after the hash of
// the key. All of it is checked before it is used, so neither a damaged file nor two keys with the same hash can lead
// to a wrong picture. The entries are spread over 64 sub-folders, each of which may take up a 64th of the limit. Adding
// an entry checks only its own sub-folder, so the limit always holds at little cost. The modification time of an entry
// is the time of its last use.
//
// Tested by tests/unit/logo_client/picture_store_test.cpp and tests/tools/test_logo_store.py.

namespace varnolix::logos {

/// A store that is ready for use.
struct PictureStore {
    std::string folder;   ///< accessible to the user only
    std::uint64_t limit;  ///< bytes on the disk
};

/// The store that the environment describes; its folder is created if it is missing. Nothing if the store is turned
/// off, or if there is no folder that belongs to this user alone.
std::optional<PictureStore> openStore();

/// Everything that a picture depends on, as one text.
std::string pictureKey(const std::string& tools, const std::vector<std::string>& environment,
                       const std::vector<std::string>& options, std::string_view matrix);

/// The picture stored under this key. Nothing if there is none, or if the entry is damaged.
std::optional<std::string> storedPicture(const PictureStore& store, const std::string& key);

/// Stores a picture, replacing an earlier one, and removes the least recently used ones if the limit is exceeded. If
/// storing fails, nothing is stored.
void keepPicture(const PictureStore& store, const std::string& key, const std::string& picture);

/// The file in which a picture is stored.
std::string entryPath(const PictureStore& store, const std::string& key);

}  // namespace varnolix::logos
