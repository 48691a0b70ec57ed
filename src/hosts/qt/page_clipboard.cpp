#include "hosts/qt/page_clipboard.h"

#include "hosts/qt/page_image.h"
#include "qvgraph/fault.h"
#include "qvgraph/page_file.h"

#include <QtCore/QMimeData>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>

namespace qv::qt {
namespace {

QByteArray byte_array(output::Bytes const& bytes) {
    return {reinterpret_cast<char const*>(bytes.data()), static_cast<qsizetype>(bytes.size())};
}

} // namespace

void PageClipboard::clear() {
    QGuiApplication::clipboard()->clear();
}

void PageClipboard::set_picture(host::PagePicture const& picture) {
    auto data = std::make_unique<QMimeData>();
    for (std::string_view const type : output::clipboard_types)
        data->setData(QString::fromUtf8(type.data(), static_cast<qsizetype>(type.size())),
                      byte_array(output::encode_page(type, picture, fonts_)));
    data->setImageData(image_of(picture.pixels()).copy());
    QClipboard& clipboard = *QGuiApplication::clipboard();
    QMimeData* const offered = data.release();
    clipboard.setMimeData(offered);
    // Platforms whose clipboard ends with the program own nothing, but hand back what they were given.
    if (!clipboard.ownsClipboard() && clipboard.mimeData() != offered)
        raise_fault(FaultNumber::CannotOpenClipboard,
                    "The clipboard cannot be opened; another program holds it, try again");
}

} // namespace qv::qt
