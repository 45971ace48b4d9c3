#include "imaging/picture_file.h"

#include <csetjmp>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include <jpeglib.h>

#include "base/errors.h"
#include "imaging/texts.h"
#include "platform/files/whole_file.h"

namespace velk {

namespace {

constexpr std::size_t kBmpHeader = 54;

void CheckCreated(const Bitmap& image, const std::string& path) {
  if (!image.Bits()) throw RuntimeError(ErrorNumber::InvalidArgument, text::PictureNotSaved + path);
}

std::string_view Bytes(const std::uint8_t* bytes, std::size_t count) {
  return {reinterpret_cast<const char*>(bytes), count};
}

void Write(const std::string& path, std::initializer_list<std::string_view> parts) {
  try {
    WriteWholeFile(path, parts);
  } catch (const RuntimeError& error) {
    throw RuntimeError(error.Number(), text::PictureNotSaved + error.Text());
  }
}

/// The encoder's errors end the program unless they jump out of it.
struct JpegErrors {
  jpeg_error_mgr manager;
  std::jmp_buf leave;
  char words[JMSG_LENGTH_MAX];
};

void OnJpegError(j_common_ptr info) {
  auto* errors = reinterpret_cast<JpegErrors*>(info->err);
  info->err->format_message(info, errors->words);
  std::longjmp(errors->leave, 1);
}

/// What the encoder writes, in memory of its own.
struct JpegBytes {
  ~JpegBytes() { std::free(bytes); }
  unsigned char* bytes = nullptr;
  unsigned long size = 0;
};

void Describe(jpeg_compress_struct& encoder, const Bitmap& image, int quality, int dotsPerInch) {
  encoder.image_width = static_cast<JDIMENSION>(image.Width());
  encoder.image_height = static_cast<JDIMENSION>(image.Height());
  encoder.input_components = 3;
  encoder.in_color_space = JCS_EXT_BGR;
  jpeg_set_defaults(&encoder);
  jpeg_set_colorspace(&encoder, JCS_YCbCr);
  jpeg_set_quality(&encoder, quality, TRUE);
  encoder.comp_info[0].h_samp_factor = 4;
  encoder.comp_info[0].v_samp_factor = 1;
  encoder.density_unit = 1;
  encoder.X_density = encoder.Y_density = static_cast<UINT16>(dotsPerInch);
}

/// False where the encoder gives up, with its words in `errors`. Nothing here has a destructor that a jump would skip.
bool Encode(const Bitmap& image, int quality, int dotsPerInch, JpegErrors& errors, JpegBytes& to) {
  jpeg_compress_struct encoder{};
  encoder.err = jpeg_std_error(&errors.manager);
  errors.manager.error_exit = OnJpegError;
  if (setjmp(errors.leave) != 0) {
    jpeg_destroy_compress(&encoder);
    return false;
  }
  jpeg_create_compress(&encoder);
  jpeg_mem_dest(&encoder, &to.bytes, &to.size);
  Describe(encoder, image, quality, dotsPerInch);
  jpeg_start_compress(&encoder, TRUE);
  while (encoder.next_scanline < encoder.image_height) {
    JSAMPROW row = const_cast<JSAMPROW>(image.Line(static_cast<int>(encoder.next_scanline)));
    jpeg_write_scanlines(&encoder, &row, 1);
  }
  jpeg_finish_compress(&encoder);
  jpeg_destroy_compress(&encoder);
  return true;
}

void PutLittleEndian(std::uint8_t* to, std::uint32_t value, int bytes) {
  for (int i = 0; i < bytes; ++i) to[i] = static_cast<std::uint8_t>(value >> 8 * i);
}

}  // namespace

void SaveJPG(const Bitmap& image, const std::string& path, int quality, int dotsPerInch) {
  CheckCreated(image, path);
  JpegErrors errors;
  JpegBytes encoded;
  if (!Encode(image, quality, dotsPerInch, errors, encoded))
    throw RuntimeError(ErrorNumber::DeviceIOError, text::JpegNotSaved + errors.words + ": " + path);
  Write(path, {Bytes(encoded.bytes, encoded.size)});
}

void SaveBMP(const Bitmap& image, const std::string& path, int dotsPerInch) {
  CheckCreated(image, path);
  const std::size_t size = image.BytesPerScanLine() * static_cast<std::size_t>(image.Height());
  const auto dotsPerMetre = static_cast<std::uint32_t>(dotsPerInch * 10000 / 254);
  std::uint8_t header[kBmpHeader] = {'B', 'M'};
  PutLittleEndian(header + 2, static_cast<std::uint32_t>(kBmpHeader + size), 4);
  PutLittleEndian(header + 10, kBmpHeader, 4);
  PutLittleEndian(header + 14, 40, 4);  // what follows of the header
  PutLittleEndian(header + 18, static_cast<std::uint32_t>(image.Width()), 4);
  PutLittleEndian(header + 22, static_cast<std::uint32_t>(image.Height()), 4);  // positive: the bottom line first
  PutLittleEndian(header + 26, 1, 2);
  PutLittleEndian(header + 28, 24, 2);
  PutLittleEndian(header + 34, static_cast<std::uint32_t>(size), 4);
  PutLittleEndian(header + 38, dotsPerMetre, 4);
  PutLittleEndian(header + 42, dotsPerMetre, 4);
  Write(path, {Bytes(header, sizeof header), Bytes(image.Bits(), size)});
}

}  // namespace velk
