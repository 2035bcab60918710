#pragma once
/// \file
/// The version of the library, for `#if` and for people. The build reads it from here.
///
/// A greater major number means that some program has to be changed to be compiled again; a greater
/// minor number, that programs are to be compiled again.

#define ZORVANE_VERSION_MAJOR 2
#define ZORVANE_VERSION_MINOR 0
#define ZORVANE_VERSION_REVISION 0

/// All three in one number that can be compared: 20103 is 2.1.3.
#define ZORVANE_VERSION \
    (ZORVANE_VERSION_MAJOR * 10000 + ZORVANE_VERSION_MINOR * 100 + ZORVANE_VERSION_REVISION)
