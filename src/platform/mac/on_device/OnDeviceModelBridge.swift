// Implements on_device_model_bridge.h over FoundationModels. The application also runs on systems that lack it.
import FoundationModels

private enum Availability {
  static let available: Int32 = 0
  static let notEligible: Int32 = 1
  static let notEnabled: Int32 = 2
  static let notReady: Int32 = 3
  static let unavailable: Int32 = 4
}

private enum Outcome {
  static let answered: Int32 = 0
  static let refused: Int32 = 1
  static let failed: Int32 = 2
}

public typealias Done = @convention(c) (UnsafeMutableRawPointer?, Int32, UnsafePointer<CChar>?) -> Void

// The caller's function and its data, which are used on the main thread alone.
private struct Caller: @unchecked Sendable {
  let done: Done
  let context: UnsafeMutableRawPointer?

  func tell(_ outcome: Int32, _ text: String) {
    text.withCString { done(context, outcome, $0) }
  }
}

private final class Request {
  let task: Task<Void, Never>
  init(_ task: Task<Void, Never>) { self.task = task }
}

@available(macOS 26.0, *)
private enum OnDevice {
  static let model = SystemLanguageModel(useCase: .general, guardrails: .permissiveContentTransformations)

  static func session(_ instructions: String) -> LanguageModelSession {
    LanguageModelSession(model: model, tools: [], instructions: instructions)
  }

  static func options(_ temperature: Double, _ maxTokens: Int) -> GenerationOptions {
    #if compiler(>=6.4)
      if #available(macOS 27.0, *) {
        return GenerationOptions(samplingMode: nil, temperature: temperature, maximumResponseTokens: maxTokens)
      }
    #endif
    return GenerationOptions(temperature: temperature, maximumResponseTokens: maxTokens)
  }

  static func isRefusal(_ error: any Error) -> Bool {
    #if compiler(>=6.4)
      if #available(macOS 27.0, *), case LanguageModelError.guardrailViolation = error { return true }
    #endif
    if case LanguageModelSession.GenerationError.guardrailViolation = error { return true }
    return false
  }
}

@_cdecl("nimbletype_on_device_availability")
public func availability() -> Int32 {
  guard #available(macOS 26.0, *) else { return Availability.notEligible }
  switch OnDevice.model.availability {
  case .available: return Availability.available
  case .unavailable(.deviceNotEligible): return Availability.notEligible
  case .unavailable(.appleIntelligenceNotEnabled): return Availability.notEnabled
  case .unavailable(.modelNotReady): return Availability.notReady
  default: return Availability.unavailable
  }
}

@_cdecl("nimbletype_on_device_respond")
public func respond(
  instructions: UnsafePointer<CChar>, prompt: UnsafePointer<CChar>, temperature: Double, maxTokens: Int32,
  done: @escaping Done, context: UnsafeMutableRawPointer?
) -> UnsafeMutableRawPointer {
  let caller = Caller(done: done, context: context)
  let (instructions, prompt) = (String(cString: instructions), String(cString: prompt))
  let task = Task { @MainActor in
    guard #available(macOS 26.0, *) else {
      caller.tell(Outcome.failed, "FoundationModels needs macOS 26")
      return
    }
    do {
      let session = OnDevice.session(instructions)
      let answer = try await session.respond(
        to: prompt, options: OnDevice.options(temperature, Int(maxTokens)))
      caller.tell(Outcome.answered, answer.content)
    } catch {
      let refused = OnDevice.isRefusal(error)
      caller.tell(refused ? Outcome.refused : Outcome.failed, refused ? "" : error.localizedDescription)
    }
  }
  return Unmanaged.passRetained(Request(task)).toOpaque()
}

@_cdecl("nimbletype_on_device_release")
public func release(request: UnsafeMutableRawPointer) {
  Unmanaged<Request>.fromOpaque(request).takeRetainedValue().task.cancel()
}

@_cdecl("nimbletype_on_device_prewarm")
public func prewarm(instructions: UnsafePointer<CChar>) {
  guard #available(macOS 26.0, *) else { return }
  OnDevice.session(String(cString: instructions)).prewarm()
}
