#pragma once

#include <zep/framework/Color.h>
#include <zep/scene/Vertex3.h>

#include <random>
#include <vector>

namespace ZEP {

/// The same numbers on every machine, which the distributions of the standard library are not.
class TDice {
public:
    explicit TDice(unsigned seed) : m_engine(seed) {}

    double Between(double low, double high) {
        return low + (high - low) * static_cast<double>(m_engine()) / std::mt19937::max();
    }
    int Below(int count) { return static_cast<int>(m_engine() % static_cast<unsigned>(count)); }
    bool OneIn(int count) { return Below(count) == 0; }
    template <class T>
    T& OneOf(std::vector<T>& all) {
        return all[static_cast<std::size_t>(Below(static_cast<int>(all.size())))];
    }
    TColor Color() { return TColor{static_cast<unsigned>(Below(0x1000000))}; }
    TGLArrayd3 Place(double reach) {
        const double x = Between(-reach, reach);
        const double y = Between(-reach, reach);
        return {x, y, Between(-reach, reach)};
    }
    void Set(TZEPVertex3* vector, double reach) {
        const TGLArrayd3 place = Place(reach);
        vector->SetData(place);
    }

private:
    std::mt19937 m_engine;
};

} // namespace ZEP
