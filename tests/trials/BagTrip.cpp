// bag_trip <file> <new file>: reads a bag's file and writes the bag into another.

#include "zorvane/propbag/ZVPropertyBag.h"
#include "zorvane/runtime/FileWords.h"

int main(int argc, char** argv) {
    if (argc != 3) return 2;
    zorvane::ZVPropertyBag bag;
    bag.SetContents(zorvane::modZorvane::ReadFileWords(argv[1]));
    zorvane::modZorvane::WriteFileWords(argv[2], bag.Contents());
    return 0;
}
