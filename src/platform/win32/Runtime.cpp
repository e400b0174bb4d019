// What the C++ runtime does where nobody can help any more: end the process. Its own versions would
// make a third of the launcher's code.
#include <cstdlib>
#include <string_view>

namespace __gnu_cxx {

// At an exception that nobody takes. The runtime's prints the type's name, for which it brings a
// decoder of names.
void __verbose_terminate_handler();
void __verbose_terminate_handler() {
    std::abort();
}

}  // namespace __gnu_cxx

namespace std {

// At a position beyond a text or a length beyond all memory, a fault of ours. The runtime's raise
// exceptions whose texts bring its whole string class.
void __throw_out_of_range_fmt(const char*, ...) {
    std::abort();
}
void __throw_length_error(const char*) {
    std::abort();
}
void __throw_logic_error(const char*) {
    std::abort();
}

}  // namespace std
