// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include <jni.h>

#include <iterator>

// Only the addresses matter here; the wrappers have the types.
#define HZEP_ENTRY_POINT(name, signature, function) extern "C" void function();
#include "entry_points.inc"
#undef HZEP_ENTRY_POINT

/// Binds the methods of the generated class to the entry points, whose names don't tell the class.
extern "C" JNIEXPORT jint JNICALL JNI_OnLoad(JavaVM* vm, void*) {
    static const JNINativeMethod methods[] = {
#define HZEP_ENTRY_POINT(name, signature, function)                                                                                        \
    {const_cast<char*>(name), const_cast<char*>(signature), reinterpret_cast<void*>(&function)},
#include "entry_points.inc"
#undef HZEP_ENTRY_POINT
    };
    JNIEnv* jenv = nullptr;
    if (vm->GetEnv(reinterpret_cast<void**>(&jenv), JNI_VERSION_1_8) != JNI_OK)
        return JNI_ERR;
    const jclass entryPoints = jenv->FindClass("ui/data/platform/platform/PlatformJNI");
    if (!entryPoints || jenv->RegisterNatives(entryPoints, methods, static_cast<jint>(std::size(methods))) != JNI_OK)
        return JNI_ERR;
    return JNI_VERSION_1_8;
}
