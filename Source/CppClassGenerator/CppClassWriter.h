#ifndef CPPCLASSWRITER_H
#define CPPCLASSWRITER_H

#include "CppNames.h"

#include <QCoreApplication>
#include <QStringList>

#include <map>
#include <vector>

class FeatureInfos;
class QTextStream;

/// Writes C++ classes: a catalogue and the lines of a template go in, text and messages come out.
///
/// Where the options are kept, what is done with the messages, and which files are read and written is up to the
/// class derived from it. Asks for the options again whenever it needs one. One thread at a time.
class CppClassWriter
{
    // Who translates this class translates the generator.
    Q_DECLARE_TR_FUNCTIONS(CppClassGenerator)

public:
    /// How a simple data type is spelled in the arguments of a getter and of a setter. Static texts.
    struct FeatureTypeInfo
    {
        const char* getterType;
        const char* setterType;
    };

    /// The data types whose value the SDK reads and writes in one call. Filled by the first writer.
    static std::map<KltFeatureDataType, FeatureTypeInfo> SimpleFeatureTypeMap;

    CppClassWriter();
    virtual ~CppClassWriter() = default;

    CppClassWriter(const CppClassWriter&) = delete;
    CppClassWriter& operator=(const CppClassWriter&) = delete;

    /// The present options.
    virtual CppOptions Options() const = 0;

    /// Takes one message for the user.
    virtual void Report(const QString& message) = 0;

    /// \a name cleaned to an identifier. Says so in a message if it is different from \a name.
    QString GetValidIdentifierName(const QString& name);

    /// The name of the class for the camera that the SDK calls \a cameraName.
    QString ClassNameFor(const char* cameraName);

    /// \name Templates
    /// @{

    /// The placeholders for a name, which can be anywhere in a line.
    static QStringList NamePlaceholders();

    /// Those for a block, whose line is replaced as a whole. The first of them that a line holds counts, and only where
    /// the line holds none for a name.
    static QStringList BlockPlaceholders();

    /// Writes what the lines of \a input stand for.
    void ProcessTemplate(QTextStream& output, QTextStream& input, const FeatureInfos& features);

    /// Writes what one line of a template stands for.
    virtual void Process(QTextStream& output, QString line, const FeatureInfos& features);

    /// The writers of the blocks that stand for a placeholder. All lines are indented by \a column blanks.
    /// \return the number of features or, for the enumerations, entries that were written
    int WriteMethodDeclarations(QTextStream& output, int column, const FeatureInfos& features);
    int WriteMethodImplementations(QTextStream& output, int column, const FeatureInfos& features);
    int WriteVariableDeclarations(QTextStream& output, int column, const FeatureInfos& features);
    int WriteEnumDeclarations(QTextStream& output, int column, const FeatureInfos& features);
    /// @}

protected:
    /// What stands before a declaration: nothing, unless who derives from this knows more about it.
    /// \param declared a method with its arguments, or an enumerator
    /// \param column how far the lines will be indented
    virtual QStringList LinesBefore(const QString& declared, int column) const;

    /// \name Messages about files, for those who read and write them
    /// \param kind "header" or "source"
    /// @{
    void ReportProcessing(const char* kind, const QString& templatePath);
    void ReportCreating(const char* kind, const QString& outputPath);
    void ReportDone();
    /// @}

private:
    /// Writes one method of a feature. The stream is the scratch stream of the feature's category.
    typedef void (CppClassWriter::*MethodWriter)(
        QTextStream& scratch, const QString& indent, const CppMethod& method, const CppFeatureNames& names);

    /// The names with the present options; says which had to be cleaned.
    CppNames Names();

    QString SubstituteNames(QString line) const;
    bool ProcessBlock(QTextStream& output, const QString& line, const FeatureInfos& features);

    int WriteMethods(QTextStream& output, int column, const FeatureInfos& features, MethodWriter writeMethod);
    bool WriteMethodsOf(
        const OPX::KltAPI::Feature& feature, QTextStream& scratch, const QString& indent, MethodWriter writeMethod);
    void WriteDeclaration(
        QTextStream& scratch, const QString& indent, const CppMethod& method, const CppFeatureNames& names);
    void WriteImplementation(
        QTextStream& scratch, const QString& indent, const CppMethod& method, const CppFeatureNames& names);
    void WriteEntries(QTextStream& scratch, const QString& indent, const QString& feature,
        const std::vector<OPX::KltAPI::EnumEntry>& entries);
    void WriteLinesBefore(QTextStream& scratch, const QString& indent, const QString& declared) const;
};

#endif
