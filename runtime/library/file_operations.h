// What is done to files and folders by path. Everything that fails raises an IOException.
#pragma once

#include <string>
#include <vector>

namespace krz {

/// Names of what a folder holds, sorted by their bytes.
std::vector<std::string> folder_names(const std::string& path);

void delete_file(const std::string& path);
void create_folder(const std::string& path);

/// Neither replaces anything. Moving to another volume copies and deletes.
void move_file(const std::string& from, const std::string& to);
void copy_file(const std::string& from, const std::string& to);

}  // namespace krz
