// What Python tests cannot do from Python: a dump of an array, and the locale of C++.
#include <cstddef>
#include <cstring>
#include <locale>
#include <ostream>
#include <sstream>
#include <string>

namespace {

struct Grouping : std::numpunct<char> {
    std::string do_grouping() const override { return "\3"; }
    char do_thousands_sep() const override { return ','; }
    char do_decimal_point() const override { return ';'; }
};

}  // namespace

extern "C" {

/// Calls a member `void write(std::ostream&) const` of an object and copies what it wrote to `text`.
void native_side_dump(void (*write)(void const* object, std::ostream& stream), void const* object, char* text,
                      std::size_t size)
{
    std::ostringstream stream;
    write(object, stream);
    std::strncpy(text, stream.str().c_str(), size - 1);
}

/// From now on the streams of C++ write 1234,5 as "1,234;5", or as ever.
void native_side_group_digits(bool grouped)
{
    std::locale::global(grouped ? std::locale(std::locale::classic(), new Grouping) : std::locale::classic());
}
}
