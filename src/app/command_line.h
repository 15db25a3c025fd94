#pragma once

#include <string>
#include <string_view>

namespace sondrix {

// What the programs of the command line share; program is their name.

std::string Quoted(std::string_view text);

// The line of a complaint, ended by LF.
std::string Complaint(std::string_view program, std::string_view text);

// Prints it on standard error, behind all that was printed before: on a screen both streams are one.
void Complain(std::string_view program, std::string_view text);

// Prints the text of a call that ends before it begins: what was asked for, or what is wrong with the call.
// Returns the status to leave with, which is the one given.
int EndBefore(std::string_view program, int status, std::string_view text);

// The status that a program leaves with: another one where standard output didn't take all that was printed.
int EndBehind(std::string_view program, int status);

}  // namespace sondrix
