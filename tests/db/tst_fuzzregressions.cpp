// Every input that ever made the readers' fuzz target fail, and the filing
// golden files, fed to the same entry point as the fuzzer's: each is read or
// refused with OdError, and nothing else escapes.

#include "kovAllocationLimit.h"
#include "kovAnimationDbFixture.h"
#include "kovAnimationReaderInput.h"

#include <QDir>
#include <QFile>

namespace {

class FuzzRegressions : public kovAnimationDbFixture {};

QStringList inputs(const char* folder)
{
  QDir dir(QStringLiteral(KOV_TEST_DATA_DIR "/") + QString::fromUtf8(folder));
  QStringList paths;
  for (const QString& name : dir.entryList(QDir::Files, QDir::Name)) {
    if (!name.endsWith(QLatin1String(".md")))
      paths << dir.filePath(name);
  }
  return paths;
}

TEST_F(FuzzRegressions, everyFoundInputIsReadOrRefused)
{
  QStringList paths = inputs("fuzz-regressions") + inputs("filing");
  ASSERT_GE(paths.size(), 10) << "the golden files at least";
  for (const QString& path : paths) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    const QByteArray bytes = file.readAll();
    EXPECT_NO_THROW(kovReadAnimationInput(reinterpret_cast<const OdUInt8*>(bytes.constData()), size_t(bytes.size())))
      << path.toStdString();
  }
}

} // namespace
