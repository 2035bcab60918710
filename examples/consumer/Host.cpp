// A program that makes an object of a class that only its plugin knows.
#include <dlfcn.h>

#include <iostream>

#include "zorvane/platform/Classes.h"
#include "zorvane/platform/Error.h"

int main(int, char** arguments) {
    void* const plugin = dlopen(arguments[1], RTLD_NOW | RTLD_LOCAL);
    void* const add = plugin ? dlsym(plugin, "AddClasses") : nullptr;
    if (!add) return 2;
    reinterpret_cast<void (*)()>(add)();
    try {
        std::cout << zorvane::CreatableClasses().Create("Consumer.Guest")->TypeName() << '\n';
    } catch (const zorvane::Error& error) {
        std::cout << error.what() << '\n';
    }
}
