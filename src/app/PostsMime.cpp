#include "app/PostsMime.h"

#include "workspace/RegionExchange.h"

namespace vardenix {

namespace {

constexpr const char* PostsType = "application/x-vardenix-posts";
constexpr const char* RegionType = "application/x-vardenix-exp";

QByteArray ArrayOf(const std::vector<std::byte>& bytes) {
    return {reinterpret_cast<const char*>(bytes.data()),
            static_cast<qsizetype>(bytes.size())};
}

std::span<const std::byte> BytesIn(const QByteArray& array) {
    return std::as_bytes(std::span(array.constData(), static_cast<size_t>(array.size())));
}

} // namespace

QStringList PostsMime::formats() const { return {PostsType, RegionType}; }

bool PostsMime::hasFormat(const QString& type) const { return formats().contains(type); }

QVariant PostsMime::retrieveData(const QString& type, QMetaType /*preferred*/) const {
    if (type == PostsType)
        return ArrayOf(BytesOf(clip_));
    if (type == RegionType)
        return ArrayOf(BytesOf(RegionOf(clip_)));
    return {};
}

bool HasPosts(const QMimeData* offered) {
    return offered != nullptr &&
           (offered->hasFormat(PostsType) || offered->hasFormat(RegionType));
}

OfferedPosts PostsOffered(const QMimeData& offered) {
    // Our own clip needs no bytes.
    if (const auto* ours = dynamic_cast<const PostsMime*>(&offered))
        return {ours->Clip()};
    if (offered.hasFormat(PostsType))
        return {ParseClip(BytesIn(offered.data(PostsType)))};
    const QByteArray region = offered.data(RegionType);
    return {ClipOf(ParseRegion(BytesIn(region), "the clipboard")), true};
}

} // namespace vardenix
