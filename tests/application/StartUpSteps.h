#pragma once

#include <functional>
#include <string>

/**
 * The steps of a start-up, and some later ones, that go through functions of other libraries. This program
 * defines those functions itself, and a program's own come before those of its libraries: they tell the
 * observer and pass on.
 */
namespace start_up_steps {

typedef std::function<void(const std::string& step)> Observer;

/// @p observer is called with the name of each step just before it is made.
void observe(const Observer& observer);

/// From now on the machine seems to have that many processors.
void pretend_processors(int count);

} // namespace start_up_steps
