#pragma once

#include "workspace/PostClip.h"

#include <QMimeData>

#include <memory>

namespace vardenix {

// Copied posts as the system's clipboard offers them, made when somebody asks: our own
// format, and the bytes of an .exp file.
class PostsMime : public QMimeData {
public:
    explicit PostsMime(PostClip clip) : clip_(std::move(clip)) {}

    QStringList formats() const override;
    bool hasFormat(const QString& type) const override;
    const PostClip& Clip() const { return clip_; }

protected:
    QVariant retrieveData(const QString& type, QMetaType preferred) const override;

private:
    PostClip clip_;
};

// What a clipboard holds of posts; an .exp file's bytes hold tiles alone.
struct OfferedPosts {
    PostClip Clip;
    bool TilesOnly = false;
};
bool HasPosts(const QMimeData* offered);
// Errors 62 and 9 for bytes that are none.
OfferedPosts PostsOffered(const QMimeData& offered);

} // namespace vardenix
