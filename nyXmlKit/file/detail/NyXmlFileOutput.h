// In-house, no part of the face.

#ifndef NYXMLKIT_FILE_DETAIL_NYXMLFILEOUTPUT_H
#define NYXMLKIT_FILE_DETAIL_NYXMLFILEOUTPUT_H

#include <nyXmlKit/file/NyXmlWriteResult.h>

#include <memory>
#include <ostream>
#include <streambuf>
#include <string>

#include <sys/stat.h>

/// A file that takes the place of another one when it is complete, and not before.
class NyXmlFileOutput : public std::ostream {
public:
    using Step = NyXmlWriteResult::Step;

    explicit NyXmlFileOutput(std::string const& path);

    /// Leaves the target as it was, unless commit() has been called.
    ~NyXmlFileOutput() override;

    /// Brings what was written to the disk and into its place. \return whether nothing has failed, now or before
    bool commit();

    Step failedStep() const noexcept { return m_theFailedStep; }
    std::string const& reason() const noexcept { return m_theReason; }

private:
    class Buffer final : public std::streambuf {
    public:
        ~Buffer() override;
        int descriptor = -1;
        int error = 0; ///< of the first write that failed

    protected:
        int_type overflow(int_type c) override;
        std::streamsize xsputn(char const* bytes, std::streamsize count) override;
        int sync() override { return send() ? 0 : -1; }

    private:
        friend class NyXmlFileOutput;
        bool send();
        bool sendAll(char const* bytes, std::size_t count);

        static constexpr std::size_t size = std::size_t(64) << 10;
        std::unique_ptr<char[]> m_theBytes{ new char[size] };
    };

    bool openBeside(struct stat const* old);
    bool fail(Step step, int error);
    bool syncFolder();

    std::string m_theTarget; ///< where links lead to
    std::string m_theBeside; ///< empty if the target is written to as it is, or has its document
    Step m_theFailedStep = Step::NONE;
    std::string m_theReason;
    Buffer m_theBuffer;
};

#endif
