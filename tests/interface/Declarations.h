#pragma once

#include <set>
#include <string>
#include <vector>

namespace interface {

/// An operation that a class offers to its users or to classes that derive from it.
struct Operation
{
    std::string class_name; ///< without namespaces; a nested class as Outer::Inner
    std::string name; ///< without arguments
    bool in_template; ///< of a class template
};

/// What a header declares.
struct Declarations
{
    std::set<std::string> classes; ///< those that are exported from a library
    /// The public and protected ones of all classes, but for constructors, destructors, operators, signals,
    /// what is deleted or defaulted, and what overrides an operation of a base.
    std::vector<Operation> operations;
};

/// Reads @p text, the contents of a header in the style of this project.
Declarations declarations_in(const std::string& text);

} // namespace interface
