#include "drawing/PdfFile.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <string>
#include <utility>

// Nothing here needs the library's JSON, whose header clang 14 cannot compile as C++20.
#define JSON_HH
class JSON;

#include <qpdf/Pipeline.hh>
#include <qpdf/QPDF.hh>
#include <qpdf/QPDFObjectHandle.hh>
#include <qpdf/QPDFWriter.hh>

namespace orxdrawing {

namespace {

using Object = QPDFObjectHandle;

// Hands the library's bytes to a sink.
class SinkPipeline final : public Pipeline {
public:
  explicit SinkPipeline(const ByteSink& byteSink) : Pipeline("output", nullptr), sink(byteSink) {}
  void write(unsigned char const* data, std::size_t length) override {
    sink({reinterpret_cast<const char*>(data), length});
  }
  void finish() override {}

private:
  const ByteSink& sink;
};

// Gives the library bytes that were put aside.
class SpooledData final : public Object::StreamDataProvider {
public:
  SpooledData(Spool& dataSpool, PdfStream dataStream) : spool(dataSpool), stream(dataStream) {}
  void provideStreamData(QPDFObjGen const&, Pipeline* pipeline) override {
    spool.Read(stream.place, stream.size,
               [pipeline](std::string_view bytes) { pipeline->write(bytes.data(), bytes.size()); });
    pipeline->finish();
  }

private:
  Spool& spool;
  PdfStream stream;
};

Object Number(double value) {
  const double rounded = std::round(value * 1e6) / 1e6;
  if (rounded == std::trunc(rounded)) return Object::newInteger(static_cast<long long>(rounded));
  return Object::newReal(rounded, 6);
}

class FileBuilder {
public:
  explicit FileBuilder(const PdfSettings& pdfSettings) : settings(pdfSettings) { pdf.emptyPDF(); }

  void Add(const PdfPage& page) {
    Object dictionary = Object::newDictionary();
    dictionary.replaceKey("/Type", Object::newName("/Page"));
    const Box& area = page.page.area;
    dictionary.replaceKey("/MediaBox", Object::newArray({Number(area.left), Number(area.bottom),
                                                         Number(area.right), Number(area.top)}));
    dictionary.replaceKey("/Resources", ResourcesOf(page));
    Object contents = Object::newArray();
    for (const PdfStream& stream : page.contents) contents.appendItem(MakeStream(stream));
    dictionary.replaceKey("/Contents",
                          page.contents.size() == 1 ? contents.getArrayItem(0) : contents);
    pdf.addPage(pdf.makeIndirectObject(dictionary), false);
  }

  // Labels that are the numbers from 1 on need not be told.
  void AddLabels(const std::vector<PdfPage>& pages) {
    Object numbers = Object::newArray();
    bool areNumbers = true;
    for (std::size_t i = 0; i < pages.size(); ++i) {
      const std::string& label = pages[i].page.label;
      areNumbers = areNumbers && label == std::to_string(i + 1);
      Object entry = Object::newDictionary();
      entry.replaceKey("/P", Object::newUnicodeString(label));
      numbers.appendItem(Object::newInteger(static_cast<long long>(i)));
      numbers.appendItem(entry);
    }
    const bool haveSome = std::any_of(pages.begin(), pages.end(),
                                      [](const PdfPage& page) { return !page.page.label.empty(); });
    if (areNumbers || !haveSome) return;
    Object tree = Object::newDictionary();
    tree.replaceKey("/Nums", numbers);
    pdf.getRoot().replaceKey("/PageLabels", tree);
  }

  void AddInformation() {
    Object information = Object::newDictionary();
    information.replaceKey("/Producer", Object::newString("orxprint"));
    const auto add = [&](const char* key, const std::string& text) {
      if (!text.empty()) information.replaceKey(key, Object::newUnicodeString(text));
    };
    add("/Title", settings.title);
    add("/Creator", settings.creator);
    pdf.getTrailer().replaceKey("/Info", pdf.makeIndirectObject(information));
  }

  void Write(const ByteSink& sink) {
    SinkPipeline pipeline(sink);
    QPDFWriter writer(pdf);
    writer.setOutputPipeline(&pipeline);
    writer.setStreamDataMode(qpdf_s_preserve);
    writer.setObjectStreamMode(qpdf_o_generate);
    writer.setDeterministicID(true);
    writer.write();
  }

private:
  Object MakeStream(const PdfStream& data, const char* filter = "/FlateDecode",
                    Object parameters = Object::newNull()) {
    Object stream = pdf.newStream();
    stream.replaceStreamData(std::make_shared<SpooledData>(*settings.spool, data),
                             Object::newName(filter), parameters);
    return stream;
  }

  Object MakeFaxStream(const PdfImage& image) {
    Object parameters = Object::newDictionary();
    parameters.replaceKey("/K", Object::newInteger(-1));
    parameters.replaceKey("/BlackIs1", Object::newBool(true));
    parameters.replaceKey("/Columns", Object::newInteger(image.width));
    parameters.replaceKey("/Rows", Object::newInteger(image.height));
    return MakeStream(image.data, "/CCITTFaxDecode", parameters);
  }

  Object MakeDeflatedStream(const PdfImage& image, int colours, int bits) {
    Object parameters = Object::newDictionary();
    parameters.replaceKey("/Predictor", Object::newInteger(15));
    parameters.replaceKey("/Colors", Object::newInteger(colours));
    parameters.replaceKey("/BitsPerComponent", Object::newInteger(bits));
    parameters.replaceKey("/Columns", Object::newInteger(image.width));
    return MakeStream(image.data, "/FlateDecode", parameters);
  }

  Object ResourcesOf(const PdfPage& page) {
    Object resources = Object::newDictionary();
    if (page.images.empty()) return resources;
    Object objects = Object::newDictionary();
    for (std::size_t i = 0; i < page.images.size(); ++i) {
      objects.replaceKey("/Im" + std::to_string(i), MakeImage(page.images[i]));
    }
    resources.replaceKey("/XObject", objects);
    return resources;
  }

  Object MakeImage(const PdfImage& image) {
    const bool isBilevel = image.format == ORXPixelImageFormat::Bilevel1;
    const int colours = image.format == ORXPixelImageFormat::Rgb24    ? 3
                        : image.format == ORXPixelImageFormat::Cmyk32 ? 4
                                                                      : 1;
    const int bits = isBilevel ? 1 : 8;
    Object stream = image.isFax ? MakeFaxStream(image) : MakeDeflatedStream(image, colours, bits);
    Object dictionary = stream.getDict();
    dictionary.replaceKey("/Type", Object::newName("/XObject"));
    dictionary.replaceKey("/Subtype", Object::newName("/Image"));
    dictionary.replaceKey("/Width", Object::newInteger(image.width));
    dictionary.replaceKey("/Height", Object::newInteger(image.height));
    dictionary.replaceKey("/BitsPerComponent", Object::newInteger(bits));
    dictionary.replaceKey("/ColorSpace", Object::newName(colours == 3   ? "/DeviceRGB"
                                                         : colours == 4 ? "/DeviceCMYK"
                                                                        : "/DeviceGray"));
    if (isBilevel) {  // 1 is black
      dictionary.replaceKey("/Decode",
                            Object::newArray({Object::newInteger(1), Object::newInteger(0)}));
    }
    return stream;
  }

  const PdfSettings& settings;
  QPDF pdf;
};

}  // namespace

}  // namespace orxdrawing

void WritePdfFile(const std::vector<orxdrawing::PdfPage>& pages,
                  const orxdrawing::PdfSettings& settings, const orxdrawing::ByteSink& sink) {
  orxdrawing::FileBuilder builder(settings);
  for (const orxdrawing::PdfPage& page : pages) builder.Add(page);
  builder.AddLabels(pages);
  builder.AddInformation();
  builder.Write(sink);
}
