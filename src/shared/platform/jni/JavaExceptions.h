// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#pragma once

#include "HostErrors.h"
#include "HostI18n.h"
#include "ScriptHandles.h"

#include <jni.h>

#include <new>
#include <string>
#include <vector>

/// What every generated entry point does beside the call itself.
namespace hzep_java {

/// Each byte becomes a character.
inline jstring widen(JNIEnv* jenv, const std::string& text) {
    std::vector<jchar> characters;
    characters.reserve(text.size());
    for (const char byte : text)
        characters.push_back(static_cast<unsigned char>(byte));
    return jenv->NewString(characters.data(), static_cast<jsize>(characters.size()));
}

/// To UTF-8, half a surrogate pair becoming U+FFFD. Null is refused: a NullPointerException is pending, and the answer is false.
inline bool toNarrow(JNIEnv* jenv, jstring text, std::string& out) {
    if (!text) {
        if (const jclass thrown = jenv->FindClass("java/lang/NullPointerException"))
            jenv->ThrowNew(thrown, "null string");
        return false;
    }
    const jsize size = jenv->GetStringLength(text);
    std::vector<jchar> units(static_cast<std::size_t>(size));
    jenv->GetStringRegion(text, 0, size, units.data());
    std::wstring wide;
    wide.reserve(units.size());
    for (std::size_t i = 0; i < units.size(); ++i) {
        wchar_t point = units[i];
        if (point >= 0xD800 && point < 0xDC00 && i + 1 < units.size() && units[i + 1] >= 0xDC00 && units[i + 1] < 0xE000)
            point = 0x10000 + ((point - 0xD800) << 10) + (units[++i] - 0xDC00);
        wide.push_back(point);
    }
    out = HostI18n::toUtf8(wide);
    return true;
}

/// The text in an array of one; false, with an exception pending, for null and for any other array.
inline bool readElement(JNIEnv* jenv, jobjectArray array, std::string& out) {
    const auto element = static_cast<jstring>(jenv->GetObjectArrayElement(array, 0));
    return !jenv->ExceptionCheck() && toNarrow(jenv, element, out);
}

inline void writeElement(JNIEnv* jenv, jobjectArray array, const std::string& text) {
    if (const jstring element = widen(jenv, text))
        jenv->SetObjectArrayElement(array, 0, element);
}

/// Leaves an exception of that class pending, built through its constructor from a text.
inline void throwNew(JNIEnv* jenv, const char* className, const std::string& text) {
    jenv->ExceptionClear();
    const jclass thrown = jenv->FindClass(className);
    if (!thrown)
        return; // the failed look-up is pending in its place
    const jmethodID constructor = jenv->GetMethodID(thrown, "<init>", "(Ljava/lang/String;)V");
    const jstring message = constructor ? widen(jenv, text) : nullptr;
    const jobject exception = message ? jenv->NewObject(thrown, constructor, message) : nullptr;
    if (exception)
        jenv->Throw(static_cast<jthrowable>(exception));
}

/// To be called in a handler: no exception crosses into Java.
inline void throwCurrentException(JNIEnv* jenv) {
    constexpr const char* kCommandFailed = "ui/frmwork/cmd/CommandFailedException";
    try {
        throw;
    } catch (const hzep_script::IndexError& error) {
        throwNew(jenv, "java/lang/IndexOutOfBoundsException", error.what());
    } catch (const hzep_script::GoneError& error) {
        throwNew(jenv, "java/lang/NullPointerException", error.what());
    } catch (const HostErrorBase& error) {
        throwNew(jenv, kCommandFailed, error.what());
    } catch (const std::bad_alloc&) {
        throwNew(jenv, "ui/frmwork/COutOfMemoryException", "out of memory");
    } catch (const std::exception& error) {
        throwNew(jenv, kCommandFailed, error.what());
    } catch (...) {
        throwNew(jenv, kCommandFailed, "Unknown exception occurred");
    }
}

} // namespace hzep_java
