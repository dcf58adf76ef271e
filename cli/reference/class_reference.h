// Classes with their members and what is said about these: for a terminal, and as a document.
#pragma once

#include <span>
#include <string>

#include "registry/class_info.h"

namespace cli {

/// One class, its members as they are declared and the sentences on them below.
std::string class_listing(const krz::ClassInfo& class_info);

/// docs/classes.md: all classes in the order of the sentences, classes without any behind them.
std::string class_reference(std::span<const krz::ClassInfo* const> classes);

/// A line for each member without a sentence and each sentence without a member; empty when there
/// are none.
std::string reference_faults(std::span<const krz::ClassInfo* const> classes);

}  // namespace cli
