#pragma once

#include <string>

/**
 * What is fuzzed: each function takes any bytes, hands them to the code under test and checks what must hold
 * whatever they are. It leaves nothing behind but the process's singletons, so that a process may call it as
 * often as it likes. Main thread, in a private home.
 *
 * With libFuzzer each is a program of its own (FuzzerMain.cpp); the ordinary tests call them with the inputs
 * of the folder "corpus".
 *
 * @throws Failure if something does not hold
 */
namespace fuzz {

/// The text form of a data source, and its lines as a settings list.
void data_source(const std::string& input);
/// The file in which the recent documents are stored.
void recent_documents(const std::string& input);
/// The file of the user's preferences.
void settings(const std::string& input);
/// The same file, for the places of panels and the order of tabs.
void panels(const std::string& input);
/// A script of the terrain host.
void batch_script(const std::string& input);
/// A raster file, for the terrain host.
void raster(const std::string& input);

} // namespace fuzz
