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
        if (tag.Code == m_code) Points.emplace_back();
        if (!Points.empty()) tag.SetCoordinate(m_code, Points.back());
    }

    std::vector<TGLArrayd3> Points;

private:
    int m_code;
};

} // namespace ZEP
