// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors

// Java: package, exceptions, strings and handles. The generator's own class of entry points is renamed by the build, see README.md.

%module(jniclassname="PlatformJNI") Platform
%include "enums.swg"
%javaconst(1);

%pragma(java) jniclasscode=%{
  static {
    NativeLibrary.load();
  }
%}

%{
#include "JavaExceptions.h"
%}

%exception {
    try {
        $action
    } catch (...) {
        hzep_java::throwCurrentException(jenv);
        return $null;
    }
}

%define HZEP_REFUSE_HANDLE(text)
    {
        SWIG_JavaThrowException(jenv, SWIG_JavaNullPointerException, text);
        return $null;
    }
%enddef

%typemap(in) SWIGTYPE & %{
    $1 = *($&1_ltype)&$input;
    if (!$1) {
        SWIG_JavaThrowException(jenv, SWIG_JavaNullPointerException, "$1_type reference is null");
        return $null;
    }
%}

// The mode is an opaque value, called by one name wherever it is taken.
%typemap(in) zep_platform::PlatformLoader::HwMetadataMode, zep::platform::PlatformLoader::HwMetadataMode %{
    if (const auto *mode = *(zep_platform::PlatformLoader::HwMetadataMode **)&$input) {
        $1 = *mode;
    } else {
        SWIG_JavaThrowException(jenv, SWIG_JavaNullPointerException, "Attempt to dereference null zep_platform::PlatformLoader::HwMetadataMode");
        return $null;
    }
%}

// Strings: narrow text is UTF-8. Results cross the boundary with each byte widened, and the Java side reads them as UTF-8 again.
%typemap(jni) std::string, const std::string & "jstring"
%typemap(jtype) std::string, const std::string & "String"
%typemap(jstype) std::string, const std::string & "String"
%typemap(javain) std::string, const std::string & "$javainput"
%typemap(javaout) std::string, const std::string & {
    return NativeText.fromWidenedBytes($jnicall);
  }
%typemap(in) std::string {
    if (!hzep_java::toNarrow(jenv, $input, $1))
        return $null;
}
%typemap(in) const std::string & (std::string text) {
    if (!hzep_java::toNarrow(jenv, $input, text))
        return $null;
    $1 = &text;
}
%typemap(out) std::string "$result = hzep_java::widen(jenv, $1);"
%typemap(out) const std::string & "$result = hzep_java::widen(jenv, *$1);"
%typemap(typecheck, precedence=SWIG_TYPECHECK_STRING) std::string, const std::string & = char *;
%typemap(check) const std::string & "";
%typemap(ret) const std::string & "";

// Numbers of 64 bits without a sign.
%typemap(jni) unsigned long long "jlong"
%typemap(jtype) unsigned long long "long"
%typemap(jstype) unsigned long long "java.math.BigInteger"
%typemap(javain) unsigned long long "$javainput.longValue()"
%typemap(javaout) unsigned long long {
    return new java.math.BigInteger(Long.toUnsignedString($jnicall));
  }
%typemap(in) unsigned long long "$1 = static_cast<$1_ltype>($input);"
%typemap(out) unsigned long long "$result = static_cast<jlong>($1);"

// Handles: closeable, keeping the object that they came from, and freed by themselves when nobody holds them any more.
%typemap(javabase, notderived="1") SWIGTYPE "NativeHandle"
%typemap(javain) SWIGTYPE *DISOWN "$javaclassname.swigRelease($javainput)"
%typemap(javainterfaces) SWIGTYPE ""
%typemap(javafinalize) SWIGTYPE ""
%typemap(javaimports) SWIGTYPE "import java.util.function.LongConsumer;"
%typemap(javadestruct, methodname="delete", methodmodifiers="public final") SWIGTYPE ""
%typemap(javadestruct_derived, methodname="delete", methodmodifiers="public final") SWIGTYPE ""
%define HZEP_HANDLE_BODY(kind, forgetBase, superArguments...)
%typemap(kind) SWIGTYPE %{
  private transient long swigCPtr;

  protected $javaclassname(long cPtr, boolean cMemoryOwn) {
    this(cPtr, cMemoryOwn ? PlatformJNI::delete_$javaclassname : null, cPtr);
  }

  protected $javaclassname(long cPtr, LongConsumer deleter, long owned) {
    super(superArguments);
    swigCPtr = cPtr;
  }

  protected static long getCPtr($javaclassname obj) {
    return obj == null ? 0 : obj.open(obj.swigCPtr);
  }

  protected static long swigRelease($javaclassname obj) {
    if (obj == null) {
      return 0;
    }
    obj.giveAway();
    return obj.swigCPtr;
  }

  @Override
  long nativeAddress() {
    return swigCPtr;
  }

  @Override
  void forget() {
    forgetBase
    swigCPtr = 0;
  }
%}
%enddef
HZEP_HANDLE_BODY(javabody, , deleter, owned)
HZEP_HANDLE_BODY(javabody_derived, super.forget();, PlatformJNI.$javaclazznameSWIGUpcast(cPtr), deleter, owned)

%typemap(javaout) SWIGTYPE {
    return new $&javaclassname($jnicall, true);
  }
%define HZEP_RESULT_HANDLE(keep)
%typemap(javaout) SWIGTYPE *, SWIGTYPE & {
    long cPtr = $jnicall;
    return cPtr == 0 ? null : keep(new $javaclassname(cPtr, $owner));
  }
%enddef
HZEP_RESULT_HANDLE(keep)
// A class without objects has nothing to be kept.
#define HZEP_STATIC_ONLY_BEGIN HZEP_RESULT_HANDLE()
#define HZEP_STATIC_ONLY_END HZEP_RESULT_HANDLE(keep)
%typemap(javaout) HZEPPlatformMgr * {
    return new $javaclassname($jnicall, false);
  }

// Results that are made for the script.
%define HZEP_OWN_RESULT(type...)
%typemap(javaout) type {
    long cPtr = $jnicall;
    return cPtr == 0 ? null : new $javaclassname(cPtr, true);
  }
%enddef
HZEP_OWN_RESULT(SWIGTYPE *create)
%define HZEP_DETACHED_ITER(type...)
%typemap(out) type * "*(type **)&$result = hzep_script::detach($1);"
HZEP_OWN_RESULT(type *)
%enddef

// An argument that is read and written, whether something was found or why not, is an array of one in Java.
%typemap(jni) std::string &reason "jobjectArray"
%typemap(jtype) std::string &reason "String[]"
%typemap(jstype) std::string &reason "String[]"
%typemap(javain, pre="    NativeText.checkInOut($javainput);", post="      NativeText.decodeInOut($javainput);") std::string &reason "$javainput"
%typemap(in) std::string &reason (std::string text) {
    if (!hzep_java::readElement(jenv, $input, text))
        return $null;
    $1 = &text;
}
%typemap(argout) std::string &reason "hzep_java::writeElement(jenv, $input, *$1);"
%typemap(freearg) std::string &reason ""
%typemap(check) std::string &reason ""
%typemap(typecheck, precedence=SWIG_TYPECHECK_STRING_ARRAY) std::string &reason ""
%include "typemaps.i"
%apply bool &INOUT { bool &ok };
