// SPDX-License-Identifier: MIT
#pragma once

#include <gmime/gmime.h>

#include <memory>
#include <string_view>

namespace hosts {

struct UnrefObject {
    void operator()(gpointer object) const { g_object_unref(object); }
};
template <class T>
using UniqueObject = std::unique_ptr<T, UnrefObject>;

/// Bytes, lent to the library for as long as this lives: they may be hundreds of megabytes, and the library's own way
/// is to copy them.
class LentBytes {
public:
    explicit LentBytes(std::string_view bytes)
        : _array(g_byte_array_new_take(reinterpret_cast<guint8*>(const_cast<char*>(bytes.data())), bytes.size())) {}
    LentBytes(const LentBytes&) = delete;
    LentBytes& operator=(const LentBytes&) = delete;
    ~LentBytes() { g_byte_array_free(_array, FALSE); }

    UniqueObject<GMimeStream> stream() const {
        UniqueObject<GMimeStream> stream{g_mime_stream_mem_new_with_byte_array(_array)};
        g_mime_stream_mem_set_owner(GMIME_STREAM_MEM(stream.get()), FALSE);
        return stream;
    }

private:
    GByteArray* _array;
};

}  // namespace hosts
