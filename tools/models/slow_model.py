#!/usr/bin/env python3
"""Makes a model slower without changing what it writes.   slow_model.py IN.gguf OUT.gguf --layers N

Appends N copies of the last layer whose output matrices are zero: they cost what a layer costs and add nothing to
the text passing through. For models in which the attention and the feed-forward step add to that text directly, as
in the llama architecture.
"""
import argparse
import struct

ZEROED = ("attn_output.weight", "ffn_down.weight", "attn_output.bias", "ffn_down.bias")
SCALARS = {0: "B", 1: "b", 2: "H", 3: "h", 4: "I", 5: "i", 6: "f", 7: "?", 10: "Q", 11: "q", 12: "d"}
STRING, ARRAY = 8, 9
DEFAULT_ALIGNMENT = 32


class Reader:
    def __init__(self, data):
        self.data, self.at = data, 0

    def take(self, form):
        values = struct.unpack_from("<" + form, self.data, self.at)
        self.at += struct.calcsize("<" + form)
        return values[0]

    def string(self):
        length = self.take("Q")
        self.at += length
        return self.data[self.at - length:self.at]

    def value(self, kind):
        if kind == STRING:
            return self.string()
        if kind == ARRAY:
            inner = self.take("I")
            return [self.value(inner) for _ in range(self.take("Q"))]
        return self.take(SCALARS[kind])


def packed(text):
    return struct.pack("<Q", len(text)) + text


def padding(size, alignment):
    return bytes(-size % alignment)


def read(data):
    """The properties as (key, kind, raw bytes), the value of each, the tensors, and where the data starts."""
    reader = Reader(data)
    assert reader.take("4s") == b"GGUF" and reader.take("I") in (2, 3), "not a model file"
    tensors, count = reader.take("Q"), reader.take("Q")
    entries, values = [], {}
    for _ in range(count):
        key, kind = reader.string(), reader.take("I")
        start = reader.at
        values[key] = reader.value(kind)
        entries.append((key, kind, data[start:reader.at]))
    infos = []
    for _ in range(tensors):
        name = reader.string()
        shape = [reader.take("Q") for _ in range(reader.take("I"))]
        infos.append((name.decode(), shape, reader.take("I"), reader.take("Q")))
    alignment = values.get(b"general.alignment", DEFAULT_ALIGNMENT)
    return entries, values, infos, reader.at + len(padding(reader.at, alignment)), alignment


def contents(infos, data, start):
    """Each tensor with its bytes, in the order of the file; the padding behind them does no harm."""
    ends = sorted(offset for _, _, _, offset in infos) + [len(data) - start]
    for name, shape, kind, offset in infos:
        end = next(place for place in ends if place > offset)
        yield name, shape, kind, data[start + offset:start + end]


def slowed(tensors, layers, more):
    last = f"blk.{layers - 1}."
    result = list(tensors)
    for extra in range(layers, layers + more):
        for name, shape, kind, content in tensors:
            if name.startswith(last):
                part = name[len(last):]
                # All-zero blocks mean zero in every format of weights.
                result.append((f"blk.{extra}.{part}", shape, kind, bytes(len(content)) if part in ZEROED else content))
    return result


def write(path, entries, tensors, alignment):
    head = b"GGUF" + struct.pack("<IQQ", 3, len(tensors), len(entries))
    head += b"".join(packed(key) + struct.pack("<I", kind) + raw for key, kind, raw in entries)
    offset = 0
    for name, shape, kind, content in tensors:
        head += packed(name.encode()) + struct.pack(f"<I{len(shape)}QIQ", len(shape), *shape, kind, offset)
        offset += len(content) + len(padding(len(content), alignment))
    with open(path, "wb") as out:
        out.write(head + padding(len(head), alignment))
        for _, _, _, content in tensors:
            out.write(content + padding(len(content), alignment))


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("model")
    parser.add_argument("out")
    parser.add_argument("--layers", type=int, required=True, help="how many to append")
    options = parser.parse_args()
    with open(options.model, "rb") as file:
        data = file.read()
    entries, values, infos, start, alignment = read(data)
    count = values[b"general.architecture"] + b".block_count"
    layers = values[count]
    entries = [(key, kind, struct.pack("<I", layers + options.layers) if key == count else raw)
               for key, kind, raw in entries]
    write(options.out, entries, slowed(list(contents(infos, data, start)), layers, options.layers), alignment)


if __name__ == "__main__":
    main()
