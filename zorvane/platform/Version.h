#pragma once
// The version of the library, for #if and for people. The build reads it from here.
//
// A greater major number means that some program has to be changed to be compiled again.

#define ZORVANE_VERSION_MAJOR 1
#define ZORVANE_VERSION_MINOR 0
#define ZORVANE_VERSION_REVISION 0
