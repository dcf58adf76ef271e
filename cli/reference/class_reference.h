// Classes with their members and what is said about these: for a terminal, and as a document.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "registry/class_info.h"

namespace cli {

/// One class, its members as they are declared and the sentences on them below.
std::string class_listing(const krz::ClassInfo& class_info);

/// The members of that name, in any case of letters, with the sentences on them. Empty when the
/// class declares none itself.
std::string member_listing(const krz::ClassInfo& class_info, std::string_view name);

/// docs/classes.md: all classes in the order of the sentences, classes without any behind them.
std::string class_reference(std::span<const krz::ClassInfo* const> classes);

/// A line for each member without a sentence and each sentence without a member; empty when there
/// are none.
std::string reference_faults(std::span<const krz::ClassInfo* const> classes);

}  // namespace cli
