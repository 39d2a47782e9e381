// A native consumer of quarna's arrays: the standard atmosphere, as an extension module of its own.
//
// With quarna installed for the interpreter `python`, from the folder of this file:
//
//     quarna=$(python -c 'import quarna, os; print(os.path.dirname(quarna.__file__))')
//     python=$(python -c 'import sys; print(sys.executable)')
//     cmake -B build -Dquarna_ROOT="$quarna" -DPython3_EXECUTABLE="$python"
//     cmake --build build
//     PYTHONPATH=build python -c 'import atmosphere; print(atmosphere.profile(12, 1000)[1])'
//
// profile() makes an array of its own numbers and hands it over; mean() reads what it is given, a row for example.
#include <quarna/quarna.hpp>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <numeric>
#include <span>
#include <utility>

namespace {

// U.S. Standard Atmosphere, 1976 (NOAA-S/T 76-1562): sea level and constants from its table 2, layers from
// table 4, and its equations (23), (33a) and (33b). Altitudes are geopotential metres.
struct Layer {
    double top;
    double lapse;  // kelvin per metre
};

struct Air {
    double temperature;  // kelvin
    double pressure;     // pascal
};

constexpr Layer layers[] = {{11000, -0.0065}, {20000, 0},       {32000, 0.001}, {47000, 0.0028},
                            {51000, 0},       {71000, -0.0028}, {84852, -0.002}};
constexpr double highest = std::end(layers)[-1].top;
constexpr Air seaLevel = {288.15, 101325};
constexpr double gravityOverGas = 9.80665 * 0.0289644 / 8.31432;  // g M / R, kelvin per metre

Air rise(Air from, double lapse, double height)
{
    double const temperature = from.temperature + lapse * height;
    double const ratio = lapse != 0 ? std::pow(from.temperature / temperature, gravityOverGas / lapse)
                                    : std::exp(-gravityOverGas * height / temperature);
    return {temperature, from.pressure * ratio};
}

Air airAt(double altitude)
{
    Air air = seaLevel;
    double bottom = 0;
    for (Layer const& layer : layers) {
        if (altitude <= bottom) {
            break;
        }
        air = rise(air, layer.lapse, std::min(altitude, layer.top) - bottom);
        bottom = layer.top;
    }
    return air;
}

PyObject* profile(PyObject*, PyObject* arguments)
{
    Py_ssize_t count = 0;
    double step = 0;
    if (!PyArg_ParseTuple(arguments, "nd:profile", &count, &step)) {
        return nullptr;
    }
    if (count < 1 || !(step >= 0) || static_cast<double>(count - 1) * step > highest) {
        PyErr_Format(PyExc_ValueError, "altitudes must lie between 0 and %d m.", static_cast<int>(highest));
        return nullptr;
    }
    return quarna::consumer::guarded([&] {
        // Column by column in storage: the three numbers of one altitude, then those of the next.
        auto table = quarna::consumer::makeArray<double>(
            {3, static_cast<std::size_t>(count)}, [step](std::span<double> elements) {
                for (std::size_t i = 0; i < elements.size(); i += 3) {
                    double const altitude = static_cast<double>(i / 3) * step;
                    auto const [temperature, pressure] = airAt(altitude);
                    elements[i] = altitude;
                    elements[i + 1] = temperature;
                    elements[i + 2] = pressure;
                }
            });
        return quarna::consumer::toPython(std::move(table));
    });
}

PyObject* mean(PyObject*, PyObject* array)
{
    return quarna::consumer::guarded([array] {
        auto const elements = quarna::consumer::elements<double>(quarna::consumer::fromPython(array));
        double const sum = std::accumulate(elements.begin(), elements.end(), 0.0);
        return PyFloat_FromDouble(sum / static_cast<double>(elements.size()));
    });
}

PyMethodDef methods[] = {
    {"profile", &profile, METH_VARARGS,
     "profile(count, step): rows of altitude (m), temperature (K) and pressure (Pa) from sea level up."},
    {"mean", &mean, METH_O, "mean(array): the mean of all elements of a real array of doubles; nan of none."},
    {nullptr, nullptr, 0, nullptr},
};

PyModuleDef definition = {
    PyModuleDef_HEAD_INIT, "atmosphere", nullptr, -1, methods, nullptr, nullptr, nullptr, nullptr,
};

}  // namespace

PyMODINIT_FUNC PyInit_atmosphere()
{
    return quarna::consumer::guarded([] {
        quarna::consumer::importQuarna();
        return PyModule_Create(&definition);
    });
}
