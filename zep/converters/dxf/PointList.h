#pragma once

#include <zep/converters/dxf/Record.h>

#include <vector>

namespace ZEP {

/// The coordinates of points that stand one behind the other, each begun by its x.
class TDXFPointList {
public:
    explicit TDXFPointList(int code) : m_code(code) {}
    TDXFPointList(int code, const TDXFRecord& record) : m_code(code) {
        for (const TDXFRecord::TTag& tag : record.Tags()) Take(tag);
    }
    void Take(const TDXFRecord::TTag& tag) {
        const int axis = tag.Code - m_code;
        if (axis == 0) Points.push_back({tag.Number(), 0, 0});
        if (Points.empty() || (axis != 10 && axis != 20)) return;
        Points.back()[static_cast<std::size_t>(axis / 10)] = tag.Number();
    }

    std::vector<TGLArrayd3> Points;

private:
    int m_code;
};

} // namespace ZEP
