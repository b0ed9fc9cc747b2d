# SPDX-License-Identifier: Apache-2.0
# SPDX-FileCopyrightText: the hzep platform authors
"""What every class of the library has in Python."""


class Handle:
    """An object of the library. Closing it frees what Python owns; a part keeps the object that it came from."""

    def _address(self):
        this = self.__dict__.get("this")
        return 0 if this is None else int(this)

    def close(self):
        """Free the object if it is Python's; every later call on it raises ClosedError. Closing twice is no error."""
        this = self.__dict__.get("this")
        if this is None:
            return
        if self._address() and this.own():
            type(self).__swig_destroy__(self)
        type(self)._forget(self)
        self.__dict__.pop("_origin", None)

    def __enter__(self):
        return self

    def __exit__(self, *unused):
        self.close()

    def __eq__(self, other):
        """Two handles of one native object are equal."""
        if type(other) is not type(self):
            return NotImplemented
        return self is other or (self._address() != 0 and self._address() == other._address())

    def __hash__(self):
        # As it was first asked for: closing must not change it.
        return hash(self.__dict__.setdefault("_hash", self._address()))

    def __repr__(self):
        told = [type(self).__name__]
        try:
            if self._address():
                for question in ("getName", "getPlatformFile", "getFilePath", "getFile", "getUniqueName"):
                    answer = self._answer(question) if len(told) < 3 else None
                    if answer and repr(answer) not in told:
                        told.append(repr(answer))
            else:
                told.append("closed")
        except Exception:  # its object is gone
            told[1:] = ["closed"]
        return f"<{' '.join(told)}>"

    def _answer(self, question):
        """The text that the operation answers without arguments, if there is such an operation."""
        try:
            answer = getattr(self, question)()
        except (AttributeError, TypeError):
            return None
        return answer if isinstance(answer, str) else None

    def __copy__(self):
        raise TypeError(f"a {type(self).__name__} can't be copied")

    def __deepcopy__(self, memo):
        return self.__copy__()

    def __reduce__(self):
        raise TypeError(f"a {type(self).__name__} can't be pickled")
