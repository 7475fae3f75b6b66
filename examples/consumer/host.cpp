// Loads the plug-in, uses it from a thread, and unloads it while that thread is alive: what the
// thread keeps of the library must outlive the plug-in.

#include <dlfcn.h>

#include <future>
#include <thread>

int main(int, char** arguments)
{
    void* const plugin = ::dlopen(arguments[1], RTLD_NOW | RTLD_LOCAL);
    if (plugin == nullptr) {
        return 2;
    }
    auto const finds = reinterpret_cast<bool (*)(char16_t const*)>(::dlsym(plugin, "plugin_finds"));
    std::promise<bool> found;
    std::promise<void> unloaded;
    std::thread user{[&] {
        found.set_value(finds(u"/usr") && !finds(u"/été"));
        unloaded.get_future().wait();
    }};
    bool const right = found.get_future().get();
    ::dlclose(plugin);
    unloaded.set_value();
    user.join();
    return right ? 0 : 1;
}
