#!/usr/bin/env python3
"""Writes a tiny model with sliding-window layers and random weights.   make_swa_model.py OUT.gguf

It has one token for each printable ASCII character and for each byte, says nothing sensible, and is the same file
every time. Every other layer sees the last 32 tokens only, so that tests can tell what of a prompt stays evaluated.
"""
import random
import struct
import sys

UINT32, FLOAT32, BOOL, STRING, ARRAY, INT32 = 4, 6, 7, 8, 9, 5
NORMAL, UNKNOWN, CONTROL, BYTE = 1, 2, 3, 6
ALIGNMENT = 32
LAYERS, WIDTH, HEADS, HEAD, INNER, WINDOW = 4, 32, 2, 16, 64, 32


def vocabulary():
    """Pieces, scores and types, in the order of the token ids."""
    tokens = [("<unk>", 0.0, UNKNOWN), ("<s>", 0.0, CONTROL), ("</s>", 0.0, CONTROL)]
    tokens += [(f"<0x{value:02X}>", 0.0, BYTE) for value in range(256)]
    tokens += [("\u2581" if c == 32 else chr(c), -float(c), NORMAL) for c in range(32, 127)]
    return tokens


def string(text):
    data = text.encode()
    return struct.pack("<Q", len(data)) + data


def scalar(kind, value):
    if kind == STRING:
        return string(value)
    return struct.pack({UINT32: "<I", INT32: "<i", FLOAT32: "<f", BOOL: "<?"}[kind], value)


def entry(key, kind, value):
    return string(key) + struct.pack("<I", kind) + scalar(kind, value)


def array(key, kind, values):
    head = string(key) + struct.pack("<IIQ", ARRAY, kind, len(values))
    return head + b"".join(scalar(kind, value) for value in values)


def metadata():
    tokens = vocabulary()
    prefix = "gemma2."
    return [
        entry("general.architecture", STRING, "gemma2"),
        entry("general.alignment", UINT32, ALIGNMENT),
        entry(prefix + "context_length", UINT32, 2048),
        entry(prefix + "block_count", UINT32, LAYERS),
        entry(prefix + "embedding_length", UINT32, WIDTH),
        entry(prefix + "feed_forward_length", UINT32, INNER),
        entry(prefix + "attention.head_count", UINT32, HEADS),
        entry(prefix + "attention.head_count_kv", UINT32, HEADS),
        entry(prefix + "attention.key_length", UINT32, HEAD),
        entry(prefix + "attention.value_length", UINT32, HEAD),
        entry(prefix + "attention.layer_norm_rms_epsilon", FLOAT32, 1e-6),
        entry(prefix + "attention.sliding_window", UINT32, WINDOW),
        entry("tokenizer.ggml.model", STRING, "llama"),
        array("tokenizer.ggml.tokens", STRING, [token for token, _, _ in tokens]),
        array("tokenizer.ggml.scores", FLOAT32, [score for _, score, _ in tokens]),
        array("tokenizer.ggml.token_type", INT32, [kind for _, _, kind in tokens]),
        entry("tokenizer.ggml.bos_token_id", UINT32, 1),
        entry("tokenizer.ggml.eos_token_id", UINT32, 2),
        entry("tokenizer.ggml.unknown_token_id", UINT32, 0),
        entry("tokenizer.ggml.add_bos_token", BOOL, True),
        entry("tokenizer.ggml.add_space_prefix", BOOL, False),
    ]


def tensors():
    """Names and shapes, the fastest dimension first."""
    attention = HEADS * HEAD
    yield "token_embd.weight", (WIDTH, len(vocabulary()))
    yield "output_norm.weight", (WIDTH,)
    for layer in range(LAYERS):
        for name in ("attn_norm", "post_attention_norm", "ffn_norm", "post_ffw_norm"):
            yield f"blk.{layer}.{name}.weight", (WIDTH,)
        for name in ("attn_q", "attn_k", "attn_v"):
            yield f"blk.{layer}.{name}.weight", (WIDTH, attention)
        yield f"blk.{layer}.attn_output.weight", (attention, WIDTH)
        for name in ("ffn_gate", "ffn_up"):
            yield f"blk.{layer}.{name}.weight", (WIDTH, INNER)
        yield f"blk.{layer}.ffn_down.weight", (INNER, WIDTH)


def padded(data):
    return data + bytes(-len(data) % ALIGNMENT)


def weights(generator, shape):
    count = 1
    for size in shape:
        count *= size
    values = [1.0] * count if len(shape) == 1 else [generator.gauss(0, 0.3) for _ in range(count)]
    return struct.pack(f"<{count}f", *values)


def main(path):
    generator = random.Random(7)
    infos, data = b"", b""
    for name, shape in tensors():
        infos += string(name) + struct.pack(f"<I{len(shape)}Q", len(shape), *shape)
        infos += struct.pack("<IQ", 0, len(data))
        data += padded(weights(generator, shape))
    entries = metadata()
    head = b"GGUF" + struct.pack("<IQQ", 3, sum(1 for _ in tensors()), len(entries))
    with open(path, "wb") as out:
        out.write(padded(head + b"".join(entries) + infos) + data)


if __name__ == "__main__":
    main(sys.argv[1])
